#!/usr/bin/env python3
"""Finds measured figures typed into the prose of docs/, where a rerun of
the benchmarks would contradict them without anyone noticing.

  typed_figures.py [--docs DIR] [--allow FILE]

The published timings are the generated ones: the tables between the
markers that tools/bench_report.py, tools/doc_tables.py and the chapters'
report scripts fill (<!-- <key> begin --> ... <!-- <key> end -->, the keys
of those scripts only: GENERATED below), and the
single figures of tools/bench_report.py's bench-value and bench-ratio
markers inside a sentence, which a rerun rewrites.  Prose outside them says what a table shows in words
("the ratio column above"); an A/B comparison of two versions of the code
keeps its lesson in words and leaves its numbers to the history.  This
script reads every page of docs/ (subfolders too), leaves out the
generated sections, fenced code, inline code and HTML comments, joins each
paragraph into one text and looks for
  - a number with a unit of time (ns, µs, us, ms, s, nanoseconds,
    microseconds, milliseconds, seconds), alone or as a range ("4.6-4.9 ns");
  - a number of times faster, slower or quicker, or "N times <peer>'s";
  - a ratio, speed-up or cost written out: "ratio ... 1.23", "speed-up of 3";
  - a percentage of the time or cost ("2-7% of this solve", "30 % in the
    look-ups", "a fifth of its time" is words and passes);
  - a load average ("load average 12", "load below 2", "load about 9");
  - a count of instructions (callgrind);
  - a number before "before" or "after", or beside another in brackets
    ("391 before, 326 after", "0.86 (1.03)", "(123 against 108)");
and a bench-value or bench-ratio marker at the start of a line (Markdown
would take it for a raw HTML block and cut the sentence there).
Each finding is printed as page:line: the words around the figure, and
the script fails.  A figure that may stay (a stated target, a fact of the
machine, a count fixed by the algorithm) is listed in the allow-list
(default: tools/typed_figures_allow.txt, beside this script), a line
    <page> | <words of the page that hold the figure> | <why it may stay>
which passes the findings whose figure lies inside those words on that
page.  An entry without a reason, or one that no longer matches anything,
fails the check too, so the list stays short and true.
Needs: python3 alone.
"""
import argparse
import pathlib
import re
import sys

NUM = r"\d+(?:[.,]\d+)?"
RANGE = rf"{NUM}(?:\s*(?:-|–|to|and)\s*{NUM})?"
# Before and after: a count of two digits or more, or a decimal ("0 after" is a formula's).
RANGE_AB = rf"(?:\d+\.\d+|\d{{2,}})(?:\s*(?:-|–|to|and)\s*{NUM})?"
RULES = [
    ("time", re.compile(rf"(?<![\w.^−%-]){RANGE}\s*(?:ns|µs|μs|us|ms|nanoseconds?|microseconds?|milliseconds?"
                        rf"|seconds?)(?![\w/^])")),
    # A bare "s" is a variable as often as a second ("4 s + 2"): a time
    # only when words of time follow it.
    ("time", re.compile(rf"(?<![\w.^−%-]){RANGE}\s+s(?:\s+(?:of|longer|shorter|more|less|per|wall|CPU)\b|[.;)])")),
    ("times", re.compile(rf"(?<![\w.^−]){RANGE}\s*(?:times|×|x)\s+(?:as\s+)?(?:faster|slower|quicker|fast|slow"
                         rf"|(?:the\s+)?(?:speed|time|cost)|[A-Z][\w.+-]*'s|\w+'s)\b")),
    ("times", re.compile(rf"(?<![\w.^−]){RANGE}\s*(?:times|×)(?:\s+`|[.,;)])")),
    ("times", re.compile(rf"(?<![\w.^−]){RANGE}\s*(?:times|×)\s+(?:that of|those of|\w*\d\w*|GSL|Boost|glibc)\b")),
    # An A/B record: "1.46-1.50 before and 1.22-1.35 after", "391 before, 326 after".
    ("before/after", re.compile(rf"(?<![\w.^−-]){RANGE_AB}\s+(?:before|after)\b(?!\s+(?:the|it|its|each|every|a|an)\b)")),
    ("before/after", re.compile(rf"(?<![\w.^−-])\d+\.\d+\s*\((?:\d+\.\d+|\d+\.\d+ and \d+\.\d+) before\)")),
    # A time beside its baseline's: "(123 against 108)", "0.86 (1.03)".
    ("against", re.compile(rf"\(\d+(?:\.\d+)?\s+against\s+\d+(?:\.\d+)?\)")),
    ("against", re.compile(rf"(?<![\w.^−(-])\d+\.\d\d\s*\(\d+\.\d\d\)")),
    ("ratio", re.compile(rf"\b(?:ratios?|speed-?ups?|slow-?downs?)\b[^.;:|]{{0,60}}?(?<![\w.^−-])\d+\.\d+(?![\w^])",
                         re.I)),
    ("percent", re.compile(rf"(?<![\w.^−]){RANGE}\s*%[^.;()]{{0,40}}?\b(?:time|cost|costs|faster|slower|solve|call"
                           rf"|look-?ups?|speed)\b", re.I)),
    ("percent", re.compile(rf"\b(?:time|cost|costs|faster|slower|speed)\b[^.;()]{{0,30}}?(?<![\w.^−]){RANGE}\s*%",
                           re.I)),
    ("load", re.compile(rf"\bload(?:\s+average)?\s+(?:of\s+|below\s+|under\s+|about\s+|around\s+|near\s+)?"
                        rf"{RANGE}(?![\w^])", re.I)),
    ("instructions", re.compile(rf"(?<![\w.^−]){RANGE}\s+(?:\w+\s+){{0,2}}?instructions\b", re.I)),
]

# The sections a script writes, by their markers: tools/bench_report.py
# (bench-report, bench-group, bench-groups, bench-summary, bench-isa),
# tools/doc_tables.py (table), tools/d02_work_precision.py and
# bench/e04/bench_e04kf_compare.py.  Any other marker is prose like the rest.
GENERATED = re.compile(r"<!-- ((?:bench-report|bench-groups?|bench-summary|bench-isa|table):[^>]+?"
                       r"|d02-work-precision|e04kf-compare) begin -->")
FENCE = re.compile(r"^\s*(```|~~~)")


def paragraphs(text):
    """The prose of a page: a list [(line number, text)] per
    paragraph, without generated sections, fenced or indented code, inline
    code and HTML comments."""
    para, out, inside, fence = [], [], None, None
    # A figure that tools/bench_report.py writes inside a sentence is generated.
    text = re.sub(r"<!-- bench-(value|ratio):[^>]*-->.*?<!-- /bench-\1 -->", "``", text)
    # An HTML comment may span lines: blank it out, keeping the line count.
    text = re.sub(r"<!--(?! [^>]+? (?:begin|end) -->).*?-->",
                  lambda m: "\n" * m.group(0).count("\n"), text, flags=re.S)
    lines = text.splitlines()
    for n, line in enumerate(lines, 1):
        if inside:
            if f"<!-- {inside} end -->" in line:
                inside = None
            continue
        m = GENERATED.search(line)
        if m:
            inside = m.group(1)
            if para:
                out.append(para)
                para = []
            continue
        f = FENCE.match(line)
        if fence:
            if f and f.group(1) == fence:
                fence = None
            continue
        if f:
            fence = f.group(1)
            continue
        if not line.strip() or (line.startswith("    ") and not para):
            if para:
                out.append(para)
                para = []
            continue
        para.append((n, re.sub(r"`[^`]*`", "``", line)))
    if para:
        out.append(para)
    return out


def findings(text):
    """The typed figures of a page's text: [(line, rule, matched text, context, paragraph, start, end)]."""
    found = []
    # A bench-value or bench-ratio marker that opens a line would open a raw
    # HTML block in Markdown and cut its sentence in two: it goes inside the line.
    for n, line in enumerate(text.splitlines(), 1):
        m = re.match(r"\s*(<!-- bench-(?:value|ratio):.*?-->)", line)
        if m:
            found.append((n, "marker at the start of a line", m.group(1), line.strip(), line, 0, 0))
    for para in paragraphs(text):
        joined, starts = "", []
        for n, line in para:
            starts.append((len(joined), n))
            joined += line.strip() + " "
        seen = set()
        for rule, pattern in RULES:
            for m in pattern.finditer(joined):
                if any(a <= m.start() < b or m.start() <= a < m.end() for a, b in seen):
                    continue
                seen.add((m.start(), m.end()))
                line = max(n for offset, n in starts if offset <= m.start())
                ctx = joined[max(0, m.start() - 40):m.end() + 20].strip()
                found.append((line, rule, m.group(0), ctx, joined, m.start(), m.end()))
    return sorted(found)


def read_allow(path):
    """The allow-list: [(page, words, reason, line number)]; problems for bad lines."""
    entries, problems = [], []
    for n, line in enumerate(pathlib.Path(path).read_text(encoding="utf-8").splitlines(), 1):
        if not line.strip() or line.lstrip().startswith("#"):
            continue
        parts = [p.strip() for p in line.split("|")]
        if len(parts) != 3 or not all(parts):
            problems.append(f"{path}:{n}: not '<page> | <words> | <why it may stay>': {line}")
            continue
        entries.append((parts[0], parts[1], parts[2], n))
    return entries, problems


def allowed(page, finding, entries, used):
    _, _, _, _, joined, start, end = finding
    for i, (p, words, _, _) in enumerate(entries):
        if p != page:
            continue
        at = joined.find(words)
        while at >= 0:
            if at <= start and end <= at + len(words):
                used.add(i)
                return True
            at = joined.find(words, at + 1)
    return False


def main():
    here = pathlib.Path(__file__).resolve().parent
    ap = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    ap.add_argument("--docs", default=str(here.parent / "docs"))
    ap.add_argument("--allow", default=str(here / "typed_figures_allow.txt"))
    args = ap.parse_args()
    docs = pathlib.Path(args.docs)
    entries, problems = read_allow(args.allow) if pathlib.Path(args.allow).exists() else ([], [])
    used, count = set(), 0
    for page in sorted(docs.rglob("*.md")):
        name = page.relative_to(docs).as_posix()
        for f in findings(page.read_text(encoding="utf-8")):
            if not allowed(name, f, entries, used):
                count += 1
                print(f"docs/{name}:{f[0]}: {f[1]}: \"{f[2]}\" in \"... {f[3]} ...\"")
    for i, (page, words, _, n) in enumerate(entries):
        if i not in used:
            problems.append(f"{args.allow}:{n}: allows nothing any more ({page}: {words})")
    for p in problems:
        print(p)
    if count or problems:
        sys.exit(f"typed_figures.py: {count} measured figures typed outside the generated tables"
                 + (f", {len(problems)} problems of the allow-list" if problems else "")
                 + " (point the prose at the table, or generate the figure; a target or a fact that may"
                   " stay goes into the allow-list with its reason)")
    print("typed_figures.py: no measured figure typed outside the generated tables")


if __name__ == "__main__":
    main()

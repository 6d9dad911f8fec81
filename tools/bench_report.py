#!/usr/bin/env python3
"""Turns the JSON of the benchmark programs into the figure tables of
docs/benchmarks.md and the charts of docs/figures/.

  bench_report.py [--docs DIR] [--no-charts] [--check] RESULT.json ...

Every program of bench/ runs on Google Benchmark through bench/zem_bench.h
and writes <program>.json; benchmark names are "<group>/<contender>", ours
first in each group.  For each chapter found in the files, the section
between the markers
    <!-- bench-report:<chapter> begin -->  ...  <!-- bench-report:<chapter> end -->
of docs/benchmarks.md is replaced (appended, with the markers, the first
time) by a table per group: the median over the repetitions of the time per
item (call, solve, value), its coefficient of variation, the ratio to ours
(above 1: ours is faster) and the program's counters; and the chart
docs/figures/bench-<chapter>.png (those ratios, one bar per peer, per group)
is redrawn.  A routine's own page may show one group's table between
    <!-- bench-group:<chapter>:<group> begin -->  ...  <!-- bench-group:<chapter>:<group> end -->
which is replaced likewise, and the groups whose names start with a prefix
as one table (a row a group, the prefix left out; each contender's time
and each peer's ratio to ours) between
    <!-- bench-groups:<chapter>:<prefix> begin -->  ...  <!-- bench-groups:<chapter>:<prefix> end -->
The groups of a prefix summed up, a row per peer (how many groups, the
ratio of the total times, the geometric mean, smallest and largest of the
per-group ratios, the groups where ours is faster), between
    <!-- bench-summary:<chapter>:<prefix> begin -->  ...  <!-- bench-summary:<chapter>:<prefix> end -->
A file run with the instruction set forced (ZEM_ISA=<set>, and
--benchmark_context=zem_isa=<set> so that the file says so) is kept apart
from the chapter's section and chart: the files of one chapter with their
sets give, between
    <!-- bench-isa:<chapter>:<group> begin -->  ...  <!-- bench-isa:<chapter>:<group> end -->
a table of that group with a row per set (avx512, avx2, baseline), and each
contender's median time per item.
A sentence that needs one figure holds it between
    <!-- bench-value:<chapter>:<group>/<contender> -->  ...  <!-- /bench-value -->
(the median time per item of that contender) or
    <!-- bench-ratio:<chapter>:<group>/<contender> | <group>/<contender> -->  ...  <!-- /bench-ratio -->
(the first's median over the second's, two decimals: a routine against a
baseline that the table's ratio column, always to ours, does not give);
a rerun rewrites it like a table.
Sections of chapters not in the files are left as they are, so figures are
only ever replaced by a rerun.  With --check nothing is written: the script
fails when a page shows figures other than those the files give (that the
published figures are those of a given run).  tools/bench.sh runs every program and then
this script.  Needs: python3, python3-matplotlib (charts).
"""
import argparse
import collections
import json
import pathlib
import re
import statistics

UNIT = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}


def load(path):
    data = json.loads(pathlib.Path(path).read_text())
    ctx = data.get("context", {})
    chapter = ctx.get("zem_chapter") or pathlib.Path(path).stem
    runs = collections.defaultdict(list)   # name -> [ns per item of each repetition]
    meta = {}
    for b in data.get("benchmarks", []):
        # Google Benchmark appends the run's settings to the name
        # ("/min_time:0.050", "/real_time", ...): they are not part of it.
        name = re.sub(r"(/(real_time|manual_time|min_time:[^/]*|iterations:\d+|repeats:\d+))+$", "",
                      b.get("run_name", b["name"]))
        if "/" not in name:
            continue
        items = b.get("items", 1.0) or 1.0
        # A run timed by hand (a child process, say) reports its time as
        # the real time; the CPU time is the parent's bookkeeping.
        manual = "/manual_time" in b.get("run_name", b["name"])
        ns = b["real_time" if manual else "cpu_time"] * UNIT.get(b.get("time_unit", "ns"), 1.0) / items
        if b.get("run_type") == "iteration":
            runs[name].append(ns)
        m = meta.setdefault(name, {"order": (b.get("family_index", 0), b.get("per_family_instance_index", 0)),
                                   "counters": {}})
        # Counters from the measured repetitions only: the aggregate rows
        # (mean, median, stddev, cv) carry statistics of the counter, not
        # its value.
        if b.get("run_type") == "iteration":
            for key, value in b.items():
                if key in ("evals", "failures") or key.startswith("zem_"):
                    m["counters"][key] = value
    groups = collections.OrderedDict()
    for name in sorted(meta, key=lambda n: meta[n]["order"]):
        group, contender = name.rsplit("/", 1)  # a group name may hold a slash (1/sqrt(x))
        groups.setdefault(group, []).append((contender, runs.get(name, []), meta[name]["counters"]))
    return chapter, ctx, groups


def fmt_time(ns):
    if ns >= 1e9:
        return f"{ns / 1e9:.3g} s"
    if ns >= 1e6:
        return f"{ns / 1e6:.3g} ms"
    if ns >= 1e3:
        return f"{ns / 1e3:.3g} µs"
    return f"{ns:.3g} ns"


def md(text):
    """A name as Markdown text: an asterisk (a formula's product) is not emphasis."""
    return text.replace("*", r"\*")


def measured(path, ctx, groups):
    """The line that says when, where and how a file was measured."""
    reps = max((len(r) for g in groups.values() for _, r, _ in g), default=0)
    load = ctx.get("load_avg")
    busy = f", load average {load[0]:.1f}" if load else ""
    return (f"Measured {ctx.get('date', '?')} by `{ctx.get('zem_program', path.stem)}` on "
            f"{ctx.get('num_cpus', '?')} CPUs at {ctx.get('mhz_per_cpu', '?')} MHz{busy} "
            f"(Google Benchmark, {reps} repetitions randomly interleaved; medians of the CPU time)."
            + (f" Added to its file in the same session: {ctx['zem_peers']}." if ctx.get("zem_peers") else ""))


def table(contenders):
    """A group's table: time per item, cv, ratio to ours, counters."""
    ours = statistics.median(contenders[0][1]) if contenders and contenders[0][1] else None
    counters = sorted({k for _, _, c in contenders for k in c})
    lines = ["| | time each | cv | ratio to " + md(contenders[0][0]) + " |" + "".join(f" {k} |" for k in counters),
             "|---|---|---|---|" + "---|" * len(counters)]
    for contender, times, c in contenders:
        if not times:
            continue
        med = statistics.median(times)
        cv = statistics.pstdev(times) / statistics.mean(times) if len(times) > 1 else 0.0
        ratio = f"{med / ours:.2f}" if ours else ""
        lines.append(f"| {md(contender)} | {fmt_time(med)} | {100 * cv:.1f}% | {ratio} |"
                     + "".join(f" {c.get(k, ''):.4g} |" if k in c else " |" for k in counters))
    return lines


def section(chapter, files, chart):
    lines = [f"<!-- bench-report:{chapter} begin -->",
             f"<!-- generated by tools/bench_report.py from {', '.join(p.name for p, _, _ in files)}: do not edit -->", ""]
    for path, ctx, groups in files:
        lines += [measured(path, ctx, groups), ""]
        for group, contenders in groups.items():
            lines += [f"**{md(group)}**", ""] + table(contenders) + [""]
    if chart:
        lines += [f"![Time of each contender relative to ours, {chapter}](figures/bench-{chapter}.png)", ""]
    lines.append(f"<!-- bench-report:{chapter} end -->")
    return "\n".join(lines)


# A routine's own page shows its group's table between the markers
#   <!-- bench-group:<chapter>:<group> begin -->  ...  <!-- bench-group:<chapter>:<group> end -->
GROUP_MARK = re.compile(r"<!-- bench-group:([^:]+):(.+?) begin -->.*?<!-- bench-group:\1:\2 end -->", re.S)


# Several groups as one table, a row a group:
#   <!-- bench-groups:<chapter>:<prefix> begin -->  ...  <!-- bench-groups:<chapter>:<prefix> end -->
GROUPS_MARK = re.compile(r"<!-- bench-groups:([^:]+):(.+?) begin -->.*?<!-- bench-groups:\1:\2 end -->", re.S)


def rows_table(prefix, groups):
    """The groups named prefix...: a row each, the contenders' median times
    and each peer's ratio to ours (above 1: ours is faster)."""
    chosen = [(g[len(prefix):].strip(), c) for g, c in groups.items() if g.startswith(prefix) and c and c[0][1]]
    names = [name for name, _, _ in chosen[0][1]] if chosen else []
    lines = ["| | " + " | ".join(md(n) for n in names) + " | "
             + " | ".join(f"{md(n)} / {md(names[0])}" for n in names[1:]) + " |",
             "|---|" + "---|" * (2 * len(names) - 1)]
    for label, contenders in chosen:
        med = {n: statistics.median(t) for n, t, _ in contenders if t}
        ours = med.get(names[0])
        lines.append(f"| {md(label)} | " + " | ".join(fmt_time(med[n]) if n in med else "" for n in names) + " | "
                     + " | ".join(f"{med[n] / ours:.2f}" if n in med and ours else "" for n in names[1:]) + " |")
    return lines


# The groups of a prefix summed up, a row per peer:
#   <!-- bench-summary:<chapter>:<prefix> begin -->  ...  <!-- bench-summary:<chapter>:<prefix> end -->
SUMMARY_MARK = re.compile(r"<!-- bench-summary:([^:]+):(.+?) begin -->.*?<!-- bench-summary:\1:\2 end -->", re.S)


def summary_table(prefix, groups):
    """Each peer against ours over the groups named prefix...: the ratios
    are the peer's time over ours (above 1: ours is faster)."""
    per_peer = collections.OrderedDict()   # peer -> [(ours, peer)] medians
    for g, contenders in groups.items():
        if not g.startswith(prefix) or not contenders or not contenders[0][1]:
            continue
        ours = statistics.median(contenders[0][1])
        for n, t, _ in contenders[1:]:
            if t:
                per_peer.setdefault(n, []).append((ours, statistics.median(t)))
    lines = [f"| peer | groups | ratio of the total times | geometric mean of the ratios "
             "| smallest | largest | groups where ours is faster |", "|---|---|---|---|---|---|---|"]
    for n, pairs in per_peer.items():
        ratios = [b / a for a, b in pairs]
        geo = statistics.geometric_mean(ratios)
        lines.append(f"| {md(n)} | {len(pairs)} | {sum(b for _, b in pairs) / sum(a for a, _ in pairs):.2f} | "
                     f"{geo:.2f} | {min(ratios):.2f} | {max(ratios):.2f} | {sum(r > 1 for r in ratios)} |")
    return lines


# One group measured with each instruction set, a row a set:
#   <!-- bench-isa:<chapter>:<group> begin -->  ...  <!-- bench-isa:<chapter>:<group> end -->
ISA_ORDER = ["avx512", "avx2", "baseline"]   # widest first, the rows' order
ISA_MARK = re.compile(r"<!-- bench-isa:([^:]+):(.+?) begin -->.*?<!-- bench-isa:\1:\2 end -->", re.S)


def isa_table(group, runs):
    """The group's contenders' median times per item, a row per instruction
    set (runs: [(set, groups)] in the order measured)."""
    names = []
    for _, groups in runs:
        for n, t, _ in groups.get(group, []):
            if t and n not in names:
                names.append(n)
    lines = ["| kernel set | " + " | ".join(md(n) for n in names) + " |", "|---|" + "---|" * len(names)]
    for isa, groups in runs:
        med = {n: statistics.median(t) for n, t, _ in groups.get(group, []) if t}
        if med:
            lines.append(f"| {md(isa)} | " + " | ".join(fmt_time(med[n]) if n in med else "" for n in names) + " |")
    return lines


# One figure inside a sentence:
#   <!-- bench-value:<chapter>:<group>/<contender> -->...<!-- /bench-value -->
#   <!-- bench-ratio:<chapter>:<group>/<contender> | <group>/<contender> -->...<!-- /bench-ratio -->
VALUE_MARK = re.compile(r"(<!-- bench-(value|ratio):([^:]+):(.+?) -->).*?(<!-- /bench-\2 -->)", re.S)


def median_of(by_chapter, chapter, name):
    """The median time per item of "<group>/<contender>" in the chapter's files, or None."""
    group, _, contender = name.strip().rpartition("/")
    for _, _, groups in by_chapter.get(chapter, []):
        for n, times, _ in groups.get(group, []):
            if n == contender and times:
                return statistics.median(times)
    return None


def fill_values(text, by_chapter):
    """The figures of the bench-value and bench-ratio markers of a page's
    text whose chapter was measured; a name the files lack is an error
    (a figure a rerun could not rewrite)."""
    def one(m):
        kind, chapter, names = m.group(2), m.group(3), m.group(4)
        if chapter not in by_chapter:
            return m.group(0)
        meds = [median_of(by_chapter, chapter, n) for n in names.split(" | ")]
        if None in meds or len(meds) != (1 if kind == "value" else 2):
            raise SystemExit(f"bench_report.py: {m.group(1)}: no such benchmark in the files of {chapter}")
        figure = fmt_time(meds[0]) if kind == "value" else f"{meds[0] / meds[1]:.2f}"
        return m.group(1) + figure + m.group(5)
    return VALUE_MARK.sub(one, text)


def fill_pages(docs, by_chapter, by_isa=None, check=False):
    """Replaces the group sections of the pages other than benchmarks.md
    whose chapter was measured; returns the pages changed (with check, the
    pages that would change, none written)."""
    by_isa = by_isa or {}
    changed = []
    for page in sorted(docs.rglob("*.md")):
        if page.name == "benchmarks.md":
            continue
        text = page.read_text(encoding="utf-8")

        def one(m):
            chapter, group = m.group(1), m.group(2)
            for path, ctx, groups in by_chapter.get(chapter, []):
                if group in groups:
                    return "\n".join([m.group(0).split("\n", 1)[0],
                                      f"<!-- generated by tools/bench_report.py from {path.name}: do not edit -->", "",
                                      measured(path, ctx, groups), ""] + table(groups[group])
                                     + ["", f"<!-- bench-group:{chapter}:{group} end -->"])
            return m.group(0)

        def many(m):
            chapter, prefix = m.group(1), m.group(2)
            for path, ctx, groups in by_chapter.get(chapter, []):
                if any(g.startswith(prefix) for g in groups):
                    return "\n".join([m.group(0).split("\n", 1)[0],
                                      f"<!-- generated by tools/bench_report.py from {path.name}: do not edit -->", "",
                                      measured(path, ctx, groups), ""] + rows_table(prefix, groups)
                                     + ["", f"<!-- bench-groups:{chapter}:{prefix} end -->"])
            return m.group(0)

        def summed(m):
            chapter, prefix = m.group(1), m.group(2)
            for path, ctx, groups in by_chapter.get(chapter, []):
                if any(g.startswith(prefix) for g in groups):
                    return "\n".join([m.group(0).split("\n", 1)[0],
                                      f"<!-- generated by tools/bench_report.py from {path.name}: do not edit -->", "",
                                      measured(path, ctx, groups), ""] + summary_table(prefix, groups)
                                     + ["", f"<!-- bench-summary:{chapter}:{prefix} end -->"])
            return m.group(0)

        def isa(m):
            chapter, group = m.group(1), m.group(2)
            files = sorted([(path, ctx, groups) for path, ctx, groups in by_isa.get(chapter, []) if group in groups],
                           key=lambda f: ISA_ORDER.index(f[1]["zem_isa"]) if f[1]["zem_isa"] in ISA_ORDER else 99)
            if not files:
                return m.group(0)
            path, ctx, groups = files[0]
            sets = ", ".join(c["zem_isa"] for _, c, _ in files)
            return "\n".join([m.group(0).split("\n", 1)[0],
                              f"<!-- generated by tools/bench_report.py from {', '.join(p.name for p, _, _ in files)}: "
                              "do not edit -->", "",
                              measured(path, ctx, groups) + f" One run per kernel set, forced by ZEM_ISA: {sets}.", ""]
                             + isa_table(group, [(c["zem_isa"], g) for _, c, g in files])
                             + ["", f"<!-- bench-isa:{chapter}:{group} end -->"])

        new = SUMMARY_MARK.sub(summed, ISA_MARK.sub(isa, GROUPS_MARK.sub(many, GROUP_MARK.sub(one, text))))
        new = fill_values(new, by_chapter)
        if new != text:
            if not check:
                page.write_text(new, encoding="utf-8")
            changed.append(page.name)
    return changed


def draw(chapter, files, out):
    import matplotlib
    matplotlib.use("Agg")
    import matplotlib.pyplot as plt
    rows = []
    for _, _, groups in files:
        for group, contenders in groups.items():
            if not contenders or not contenders[0][1]:
                continue
            ours = statistics.median(contenders[0][1])
            for contender, times, _ in contenders[1:]:
                if times:
                    lo, hi = min(times) / ours, max(times) / ours
                    rows.append((f"{group}: {contender}", statistics.median(times) / ours, lo, hi))
    if not rows:
        return False
    height = max(2.5, 0.28 * len(rows) + 1.2)
    fig, ax = plt.subplots(figsize=(9, height))
    y = list(range(len(rows)))[::-1]
    vals = [r[1] for r in rows]
    err = [[r[1] - r[2] for r in rows], [r[3] - r[1] for r in rows]]
    ax.barh(y, vals, xerr=err, color=["tab:green" if v >= 1 else "tab:red" for v in vals], capsize=2)
    ax.axvline(1.0, color="black", linewidth=0.8)
    ax.set_yticks(y)
    ax.set_yticklabels([r[0] for r in rows], fontsize=7)
    ax.set_xscale("log")
    lo, hi = min(r[2] for r in rows), max(r[3] for r in rows)
    ticks = [t for t in (0.01, 0.02, 0.05, 0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100, 1000, 1e4, 1e5)
             if lo / 2 <= t <= hi * 2] or [1]
    ax.set_xticks(ticks)
    ax.set_xticklabels([f"{t:g}" for t in ticks])
    ax.minorticks_off()
    ax.set_xlabel("time relative to ours (above 1: ours is faster; bars: min-max of the repetitions)")
    ax.set_title(f"{chapter}: peers against ours")
    fig.tight_layout()
    out.parent.mkdir(parents=True, exist_ok=True)
    fig.savefig(out, dpi=110)
    plt.close(fig)
    return True


def main():
    ap = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    ap.add_argument("json", nargs="+")
    ap.add_argument("--docs", default=str(pathlib.Path(__file__).resolve().parent.parent / "docs"))
    ap.add_argument("--no-charts", action="store_true")
    ap.add_argument("--check", action="store_true",
                    help="write nothing; fail if a page's figures differ from the ones these files give")
    args = ap.parse_args()
    docs = pathlib.Path(args.docs)
    by_chapter, by_isa = collections.OrderedDict(), collections.OrderedDict()
    for path in args.json:
        chapter, ctx, groups = load(path)
        # A run with the instruction set forced is not the chapter's figure.
        (by_isa if ctx.get("zem_isa") else by_chapter).setdefault(chapter, []).append((pathlib.Path(path), ctx, groups))
    page = docs / "benchmarks.md"
    text = page.read_text(encoding="utf-8") if page.exists() else "# Benchmarks\n"
    before = text
    for chapter, files in by_chapter.items():
        png = docs / "figures" / f"bench-{chapter}.png"
        if args.check:
            chart = png.exists()
        else:
            chart = not args.no_charts and draw(chapter, files, png)
        new = section(chapter, files, chart)
        pattern = re.compile(rf"<!-- bench-report:{re.escape(chapter)} begin -->.*?<!-- bench-report:{re.escape(chapter)} end -->", re.S)
        if pattern.search(text):
            text = pattern.sub(lambda m: new, text)
        else:
            text = text.rstrip("\n") + f"\n\n## {chapter}: measured by the harness\n\n{new}\n"
        if not args.check:
            print(f"{chapter}: {sum(len(g) for _, _, g in files)} groups -> {page}"
                  + (f", figures/bench-{chapter}.png" if chart else ""))
    text = fill_values(text, by_chapter)
    if args.check:
        stale = ([page.name] if text != before else []) + fill_pages(docs, by_chapter, by_isa, check=True)
        if stale:
            raise SystemExit(f"bench_report.py: figures that these files do not give in {', '.join(stale)}")
        print("bench_report.py: the pages show the figures of these files")
        return
    page.write_text(text, encoding="utf-8")
    for name in fill_pages(docs, by_chapter, by_isa):
        print(f"group tables -> {name}")


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Stages the documentation site's sources: build_site.py <repo> <staging>.

Everything is derived from the files present, so a chapter, a page or a
code added to the tree appears in the site without an edit here:
  - docs/**/*.md are copied; a routine page (docs/XXXXX.md, XXXXX a
    five-character routine name) gets an anchor by its name, index entries
    for its name, its entries, its long C name and its failure codes, and a
    line naming the long C name (so that search finds it);
  - one index page per chapter (the chapter codes of the page names), titled
    from the README's contents table (or the chapter's own page);
  - the routine table, the error codes with their texts (include/
    zem_codes.def) and the enumerations (include/zem_enums.def) are
    generated, never copied;
  - the user's guide (docs/guide/) shows the programs of tests/install/, the
    ones the test suite builds and runs;
  - frame.md and frame-*.md form the contributor's guide.
Needs python3 only; tools/docs.sh then runs Sphinx with MyST.
"""
import pathlib
import re
import shutil
import sys

repo = pathlib.Path(sys.argv[1]).resolve()
out = pathlib.Path(sys.argv[2]).resolve()
docs = repo / "docs"
ROUTINE = re.compile(r"^([a-z]\d\d)([a-z]{2})$")
CHAPTER_PAGE = re.compile(r"^([a-z]\d\d)(-[a-z0-9-]+)?$")
CONTRIB = re.compile(r"^(frame(-.*)?|contributing.*)$")
GUIDE_ORDER = ["install", "first-c", "first-fortran", "failures", "comm", "threads",
               "output-units", "mpi"]

if out.exists():
    shutil.rmtree(out)
out.mkdir(parents=True)


def c_string(literals):
    """The value of adjacent C string literals."""
    text = "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', literals))
    return re.sub(r"\\(.)", lambda m: {"n": "\n", "t": "\t"}.get(m.group(1), m.group(1)), text)


def md_cell(text):
    return text.replace("|", "\\|").replace("\n", "<br>").replace("*", "\\*").replace("_", "\\_")


def title_of(path):
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("# "):
            return line[2:].strip()
    return path.stem


# ---- long C names and chapter titles, from the headers and the README --------
long_names = {}  # c05ayc -> zem_zero_cont_func_brent
for header in sorted((repo / "include").glob("zem*.h")):
    for m in re.finditer(r"^#define\s+(zem_\w+)\s+([a-z]\d\d[a-z]{2}c)\b", header.read_text(), re.M):
        long_names[m.group(2)] = m.group(1)
chapter_titles = {}
readme = repo / "README.md"
for line in readme.read_text(encoding="utf-8").splitlines() if readme.exists() else []:
    cells = [c.strip() for c in line.strip().strip("|").split("|")]
    if len(cells) >= 2 and re.fullmatch(r"[a-z]\d\d|frame", cells[0]):
        chapter_titles[cells[0]] = re.split(r":\s", cells[1], 1)[0].strip()

# ---- the pages -----------------------------------------------------------------
routines = {}      # c05ay -> info
chapters = {}      # c05 -> {"routines": [...], "topics": [...]}
contrib, user_topics, guide = [], [], []
source_file = re.compile(r"\]\((?!https?:|#|mailto:)([^)\s]+)\)")


def fix_links(text, page):
    """Links to files outside the site (source files) become code spans."""
    def repl(m):
        target = m.group(1)
        path = target.split("#")[0]
        if not path:
            return m.group(0)
        resolved = (page.parent / path).resolve()
        if resolved.is_relative_to(docs):
            return m.group(0)  # a page of the site (a missing one is a broken link)
        return f"](zem-source:{target})"
    text = source_file.sub(repl, text)
    # [label](zem-source:path) -> label (`path`)
    return re.sub(r"\[([^\]]*)\]\(zem-source:([^)]*)\)", r"\1 (`\2`)", text)


for page in sorted(docs.rglob("*.md")):
    rel = page.relative_to(docs)
    text = fix_links(page.read_text(encoding="utf-8"), page)
    stem = page.stem
    target = out / rel
    target.parent.mkdir(parents=True, exist_ok=True)
    if rel.parts[0] == "guide":
        guide.append(stem)
    elif len(rel.parts) == 1 and ROUTINE.match(stem):
        chapter = ROUTINE.match(stem).group(1)
        codes = sorted(set(re.findall(r"\b(N[EW]_[A-Z0-9_]+)\b", text)) - {"NE_NOERROR"})
        long_name = long_names.get(stem + "c", "")
        routines[stem] = {"chapter": chapter, "title": title_of(page), "codes": codes, "long": long_name}
        chapters.setdefault(chapter, {"routines": [], "topics": []})["routines"].append(stem)
        lines = text.split("\n")
        head = next((i for i, l in enumerate(lines) if l.startswith("# ")), 0)
        entries = [f"single: {stem}", f"single: {stem}c", f"single: {stem}f"]
        if long_name:
            entries.append(f"single: {long_name}")
        entries += [f"pair: {c}; {stem}" for c in codes]
        extra = ["", "```{index} " + "; ".join(entries), "```", ""]
        extra.append(f"**{stem}** · C entry `{stem}c`"
                     + (f" (long name `{long_name}`)" if long_name else "")
                     + f" · Fortran entry `{stem}f`"
                     + (" · failure codes " + ", ".join(f"`{c}`" for c in codes) if codes else ""))
        lines = lines[:head + 1] + extra + lines[head + 1:]
        # The example programs themselves, with what they print, at the end of
        # the page's Example section (the test suite runs them and compares).
        # A routine without programs of its own (a step of a suite, a model
        # routine of a handle) shows the first example of its chapter that
        # calls it.
        shown = []
        for suffix, language, label in (("c.c", "c", "C"), ("f.f90", "fortran", "Fortran")):
            program = repo / "examples" / f"{stem}{suffix}"
            heading = f"### {label} example program"
            if not program.exists():
                entry = stem + ("c(" if language == "c" else "f(")
                callers = [q for q in sorted((repo / "examples").glob(f"{stem[:3]}*{suffix[1:]}"))
                           if entry in q.read_text(encoding="utf-8", errors="replace").lower()]
                if callers:
                    program = callers[0]
                    heading = f"### {label} example program (`{program.name}`, which calls `{entry[:-1]}`)"
            if program.exists():
                shown += [heading, "", f"```{{literalinclude}} /examples/{program.name}",
                          f":language: {language}", "```", ""]
                if program.with_suffix(".out").exists():
                    shown += ["It prints:", "", f"```{{literalinclude}} /examples/{program.with_suffix('.out').name}",
                              "```", ""]
        accuracy = docs / "figures" / f"accuracy-{stem}.png"
        if accuracy.exists():
            lines += ["", "## Accuracy plot", "",
                      f"![{stem}: error in ULPs across the argument range](figures/accuracy-{stem}.png)", "",
                      "Drawn by `tools/accuracy_plots.py`; the table is on [the accuracy page](accuracy.md).", ""]
        if shown:
            start = next((i for i, l in enumerate(lines) if re.match(r"^##\s+Examples?\b", l)), None)
            if start is None:
                lines += ["", "## Example", ""] + shown
            else:
                end = next((i for i in range(start + 1, len(lines)) if re.match(r"^#{1,2}\s", lines[i])), len(lines))
                lines = lines[:end] + [""] + shown + lines[end:]
        text = "\n".join([f"({stem})="] + lines)
    elif len(rel.parts) == 1 and CONTRIB.match(stem):
        contrib.append(stem)
    elif len(rel.parts) == 1 and CHAPTER_PAGE.match(stem):
        chapters.setdefault(CHAPTER_PAGE.match(stem).group(1), {"routines": [], "topics": []})["topics"].append(stem)
    elif len(rel.parts) == 1:
        user_topics.append(stem)
    target.write_text(text, encoding="utf-8")
for picture in list(docs.rglob("*.png")) + list(docs.rglob("*.svg")):
    (out / picture.relative_to(docs)).parent.mkdir(parents=True, exist_ok=True)
    shutil.copy2(picture, out / picture.relative_to(docs))

(out / "examples").mkdir(exist_ok=True)
for f in sorted((repo / "examples").iterdir()):
    if f.suffix in (".c", ".f90", ".out", ".cpp"):
        shutil.copy2(f, out / "examples" / f.name)
# The guide's programs are the test suite's own (tests/install/).
(out / "guide").mkdir(exist_ok=True)
for program in sorted((repo / "tests" / "install").glob("user.*")):
    shutil.copy2(program, out / "guide" / program.name)
for extra in sorted((repo / "examples" / "mpi").glob("mpi_*")):
    shutil.copy2(extra, out / "guide" / extra.name)

# ---- chapter index pages ---------------------------------------------------------
(out / "chapters").mkdir()
for chapter, content in sorted(chapters.items()):
    title = chapter_titles.get(chapter)
    if not title:
        first = (content["topics"] or content["routines"])[0]
        title = re.sub(r"^[a-z0-9-]+:\s*", "", title_of(docs / f"{first}.md"))
    body = [f"# {chapter}: {title}", ""]
    if content["routines"]:
        body += ["| routine | C entry | long C name | Fortran entry | failure codes |",
                 "|---|---|---|---|---|"]
        for r in content["routines"]:
            info = routines[r]
            purpose = re.sub(rf"^{r}:\s*", "", info["title"])
            body.append(f"| [{r}](../{r}.md): {md_cell(purpose)} | `{r}c` | "
                        + (f"`{info['long']}`" if info["long"] else "") + f" | `{r}f` | "
                        + ", ".join(f"`{c}`" for c in info["codes"]) + " |")
        body.append("")
    chart = docs / "figures" / f"bench-{chapter}.png"
    if chart.exists():
        body += ["## Speed against the peers", "",
                 f"![{chapter}: time of the peers relative to ours](../figures/bench-{chapter}.png)", "",
                 "Regenerated with the tables of [the benchmarks page](../benchmarks.md) by `tools/bench.sh`.", ""]
    body += ["```{toctree}", ":maxdepth: 1", ""]
    body += [f"../{p}" for p in content["topics"] + content["routines"]]
    body += ["```", ""]
    (out / "chapters" / f"{chapter}.md").write_text("\n".join(body), encoding="utf-8")

# ---- generated reference tables --------------------------------------------------
(out / "reference").mkdir()
rows = ["# Routines", "",
        "Every routine by its five-character name, with its C entry, long C name,",
        "Fortran entry and the failure codes its page documents.", "",
        "| routine | chapter | C entry | long C name | Fortran entry | failure codes |",
        "|---|---|---|---|---|---|"]
for r, info in sorted(routines.items()):
    rows.append(f"| [{r}](../{r}.md) | [{info['chapter']}](../chapters/{info['chapter']}.md) | `{r}c` | "
                + (f"`{info['long']}`" if info["long"] else "") + f" | `{r}f` | "
                + ", ".join(f"`{c}`" for c in info["codes"]) + " |")
(out / "reference" / "routines.md").write_text("\n".join(rows) + "\n", encoding="utf-8")

defs = (repo / "include" / "zem_codes.def").read_text(encoding="utf-8")
code_pages = {}
for r, info in routines.items():
    for c in info["codes"]:
        code_pages.setdefault(c, []).append(r)
rows = ["# Error and warning codes", "",
        "Every code of the C interface with its number and message template, as",
        "`include/zem_codes.def` defines them (this page is generated from that",
        "file). `NE_` codes are errors, `NW_` codes warnings; in a template,",
        "`%s`, `%g` and the like stand where the message puts values.", "",
        "| code | number | message template | documented by |", "|---|---|---|---|"]
for m in re.finditer(r'ZEM_CODE\(\s*(\w+)\s*,\s*(-?\d+)\s*,\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\)', defs):
    name, number, text = m.group(1), m.group(2), c_string(m.group(3))
    by = ", ".join(f"[{r}](../{r}.md)" for r in sorted(code_pages.get(name, [])))
    rows.append(f"| `{name}` | {number} | "
                + md_cell("\n".join(l.strip() for l in text.split("\n"))) + f" | {by} |")
(out / "reference" / "codes.md").write_text("\n".join(rows) + "\n", encoding="utf-8")

enums = (repo / "include" / "zem_enums.def").read_text(encoding="utf-8")
rows = ["# Enumerations", "",
        "The enumerations of the C interface with the number of every member, as",
        "`include/zem_enums.def` defines them (this page is generated from that file).", ""]
comment = ""
for m in re.finditer(r"/\*(.*?)\*/|ZEM_ENUM_BEGIN\((\w+)\)|ZEM_ENUM\((\w+),\s*(-?\d+)\)", enums, re.S):
    if m.group(1) is not None:
        comment = " ".join(l.strip(" *") for l in m.group(1).split("\n")).strip()
    elif m.group(2):
        rows += [f"## {m.group(2)}", ""]
        if comment and not comment.startswith("The enumerations of the C interface"):
            rows += [comment, ""]
        rows += ["| member | number |", "|---|---|"]
        comment = ""
    else:
        rows.append(f"| `{m.group(3)}` | {m.group(4)} |")
        if enums[m.end():].lstrip().startswith("ZEM_ENUM_END"):
            rows.append("")
(out / "reference" / "enums.md").write_text("\n".join(rows) + "\n", encoding="utf-8")

# ---- the home page ---------------------------------------------------------------
def toctree(caption, entries, maxdepth=1):
    return ["```{toctree}", f":caption: {caption}", f":maxdepth: {maxdepth}", ""] + entries + ["```", ""]


ordered_guide = [g for g in GUIDE_ORDER if g in guide] + sorted(g for g in guide if g not in GUIDE_ORDER)
home = ["# Zem", "",
        "Zem is a numerical library for 64-bit Linux on x86-64: one shared object",
        "with a C interface and a Fortran interface, for programs written in C, C++",
        "and Fortran. New here? Start with [installing it](guide/install.md) and",
        "[your first C program](guide/first-c.md) or",
        "[your first Fortran program](guide/first-fortran.md).", "",
        "Look a routine up by its five-character name (`c05ay`), its entries",
        "(`c05ayc`, `c05ayf`), its long C name or a failure code in the",
        "[routine table](reference/routines.md), the [index](genindex) or the search box.", ""]
home += toctree("User's guide", [f"guide/{g}" for g in ordered_guide] + sorted(user_topics), 2)
home += toctree("Reference by chapter", [f"chapters/{c}" for c in sorted(chapters)])
home += toctree("Reference tables", ["reference/routines", "reference/codes", "reference/enums"])
home += toctree("Contributor's guide", sorted(contrib, key=lambda s: (s != "frame", s)))
(out / "index.md").write_text("\n".join(home), encoding="utf-8")
shutil.copy2(pathlib.Path(__file__).with_name("conf.py"), out / "conf.py")
print(f"staged {len(routines)} routine pages, {len(chapters)} chapters, {len(guide)} guide pages in {out}")

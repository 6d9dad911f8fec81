#!/usr/bin/env python3
"""Writes the reference pages docs/e04XX.md of the model routines from the
sources, so that page and code cannot disagree:
    python3 tools/e04_pages.py
Purpose: the opening comment of e04/e04XX.cpp.  Signatures: the C
prototypes in include/zem_e04.h and the Fortran interface in
include/zem_e04.fi.  Failures: the rows of the routine's message table (the
shared rows, written as macros, are listed on docs/e04-handle.md)."""
import pathlib, re

ROOT = pathlib.Path(__file__).resolve().parent.parent
H = (ROOT / "include" / "zem_e04.h").read_text()
FI = (ROOT / "include" / "zem_e04.fi").read_text()
MACROS = {
    "ZEM_E04_HANDLE_ROWS": "status 1, `NE_HANDLE`: the three handle messages and the shell refusal (docs/e04-handle.md)",
    "ZEM_E04_PHASE_ROWS": "status 2, `NE_PHASE`: \"The problem cannot be modified right now, the solver is running.\"",
    "ZEM_E04_REF_MATCH_ROW": "status 5, `NE_REF_MATCH`: nvar must match the number of variables of the handle",
    "E04_ROW_RANGE": "status 8, `NE_INVALID_ARRAY`: index out of range, with its position i",
    "E04_ROW_UPPER": "status 8, `NE_INVALID_ARRAY`: element below the diagonal",
    "E04_ROW_INCREASING": "status 8, `NE_NOT_INCREASING`: index list not strictly ascending",
    "E04_ROW_UNIQUE": "status 8, `NE_INVALID_CS`: repeated (row, column) pair, naming both",
    "E04_ROW_FINITE": "status 8, `NE_REAL_ARRAY`: value not finite",
    "E04_ROWS_BOUNDS": "status 10, `NE_BOUND`: bl > bu, bl >= bigbnd or bu <= -bigbnd (\"Infinite Bound Size\")",
    "E04_ROWS_COUNTS": "status 6: counts per matrix negative, their sum below 1 or above the array size",
    "E04_ROWS_MATRICES": "status 8: matrix elements out of range, below the diagonal, outside the diagonal blocks, repeated or not finite",
    "E04_STORE_ROWS": "the command-string failures of docs/e04rw.md",
    "E04_READER_ROWS": "the file failures of docs/e04sa.md (MPS and SDPA)",
}

# Routines whose example program is the one of a closely related routine
# (the docs site shows it on both pages), and what each program shows.
OWN_EXAMPLE = {"e04rc": "e04rb", "e04rl": "e04rg", "e04rp": "e04rn", "e04rt": "e04rs",
               "e04rx": "e04rw", "e04tb": "e04ta", "e04tj": "e04td"}
EXAMPLE_TOPIC = {
    "e04ra": "the handle's life", "e04sa": "reading files",
    "e04rb": "second-order cones and integer variables",
    "e04rd": "an SDPA stream read with too small and then sufficient limits",
    "e04rf": "a convex quadratic programme",
    "e04rg": "a nonlinear objective and its Hessian structure",
    "e04rk": "nonlinear constraints and their Hessian structures",
    "e04rm": "dense and sparse nonlinear least-squares objectives",
    "e04rn": "a matrix inequality and its bilinear terms",
    "e04rs": "quadratic constraints and a factored quadratic objective",
    "e04rw": "a starting point and a warm-start basis in the store",
    "e04ta": "appending variables and deleting components",
    "e04td": "editing bounds and coefficients in place",
}

def purpose(src):
    lines = []
    for l in src.splitlines():
        if not l.startswith("//"):
            break
        lines.append(l[2:].strip())
    return " ".join(lines)

def c_decl(name):
    m = re.search(r"/\* %s:(.*?)\*/\s*(void %sc\(.*?\);)\s*(void %sf_\(.*?\);)" % (name, name, name), H, re.S)
    return (m.group(2), m.group(3)) if m else ("", "")

def f_decl(name):
    m = re.search(r"(  subroutine %sf\(.*?end subroutine %sf)" % (name, name), FI, re.S)
    return m.group(1) if m else ""

def rows(src):
    m = re.search(r"_messages\[\] = \{(.*?)\n\};", src, re.S)
    out = []
    if not m:
        return out
    body = m.group(1)
    for mac, text in MACROS.items():
        if re.search(r"\b%s\b" % mac, body):
            out.append("- " + text)
    for r in re.finditer(r"\{(\d+), (\d+), (NE_\w+), \{((?:\"(?:[^\"\\]|\\.)*\",?\s*)+)\}", body):
        texts = re.findall(r"\"((?:[^\"\\]|\\.)*)\"", r.group(4))
        out.append("- status %s, `%s`: \"%s\"" % (r.group(1), r.group(3), " / ".join(t.replace('\\"', '"') for t in texts)))
    return out

def main():
    for src_path in sorted((ROOT / "e04").glob("e04[rst]?.cpp")):
        name = src_path.stem
        src = src_path.read_text()
        c, f_ = c_decl(name)
        page = [f"# {name}", "", purpose(src), "", "## C interface", "", "```c", c, "```", "",
                "## Fortran interface", "", "The entry as C sees it:", "", "```c", f_, "```", "", "```fortran", f_decl(name), "```", "",
                "Arguments are as the comment in include/zem_e04.h says; indices are 1-based,",
                "the handle comes first (docs/e04-handle.md), failures are reported as every",
                "routine of the library reports them (docs/errors.md).", "",
                "## Failures", "", "Checked in this order; the first that applies is reported.", ""]
        page += rows(src)
        if name in ("e04rw", "e04rx"):
            table = (ROOT / "e04" / "store_commands.h").read_text()
            which = "int_commands" if name == "e04rw" else "real_commands"
            body = table[table.index(which):].split("};")[0]
            page += ["", "## Commands", "", "Matched without regard to case or surrounding blanks; ioflag 0 reads,",
                     "1 writes (writing is refused while a solver runs).", "",
                     "| cmdstr | read | write | size |", "|---|---|---|---|"]
            sizes = {"nvar": "number of variables", "nvar_nlc": "variables + linear constraint rows",
                     "nlc": "linear constraint rows", "nres": "residuals (least-squares objective)",
                     "stored": "as stored by the solver", "mcs_list": "sum of the MCS NUMBER POINTS entries"}
            for m in re.finditer(r'\{"([^"]+)", "[^"]+", (true|false), (true|false), size_rule::(\w+)\}', body):
                page.append("| %s | %s | %s | %s |" % (m.group(1), "yes" if m.group(2) == "true" else "no",
                                                     "yes" if m.group(3) == "true" else "no", sizes[m.group(4)]))
        page += ["", "## Example", ""]
        own = OWN_EXAMPLE.get(name, name)
        if own not in ("e04ra", "e04sa") and (ROOT / "examples" / f"{own}c.c").exists():
            page += [f"examples/{own}c.c and examples/{own}f.f90"
                     + (f" (shared with {own}: {EXAMPLE_TOPIC[own]})," if own != name else f" ({EXAMPLE_TOPIC.get(own, 'this routine')}),"),
                     "with what they print in the .out files beside them; also"]
        page += ["examples/e04rac.c and examples/e04raf.f90 (the handle's life),",
                 "examples/e04sac.c and examples/e04saf.f90 (reading files); the client tests",
                 "tests/e04/client_e04_model.c and .f90 call every routine with its failures.", ""]
        (ROOT / "docs" / f"{name}.md").write_text("\n".join(page))

main()

#!/usr/bin/env python3
"""Real problem files against the readers of e04sa.

The MPS examples shipped by Debian's glpk-utils (alloy, furnace, icecream,
murtagh, plan, samp1, samp2) and the SDPA sparse example of libsdpa-dev are
read by the library and what the handle holds (as e04ry prints it) is
compared with reference figures.  The files themselves are not kept in the
repository: only the figures are, in tests/e04/data/real_files.ref.

    python3 tools/e04_real_files.py --generate
        needs glpsol (glpk-utils): runs `glpsol --check` with --wglp and
        --wlp on each MPS file and keeps, per file, the counts glpsol
        reports (rows, columns, non-zeros of the matrix and of the objective
        row), the counts of bound types of the columns and rows, and
        position-weighted sums of the bounds, the objective coefficients and
        the matrix (the objective is cross-checked, by name, between the
        --wglp and the --wlp outputs).  The SDPA figures come from reading
        the file here, independently of the library.

    python3 tools/e04_real_files.py --check <real_files program>
        the test (tests/e04/CMakeLists.txt): runs the program
        (tests/e04/real_files.c: e04sac then e04ryc) on each file that is
        present and compares the e04ry overview counts and the sums of what
        it prints with the reference.  Exits 77 (skipped) with a message
        when none of the files is installed (tools/setup.sh installs them).

Directories: $ZEM_GLPK_EXAMPLES (default /usr/share/doc/glpk-utils/examples)
and $ZEM_SDPA_EXAMPLES (default /usr/share/sdpa/example); a file compressed
as .gz is read through a decompressed temporary copy.
"""
import gzip, json, math, os, pathlib, re, shutil, subprocess, sys, tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
REF = ROOT / "tests" / "e04" / "data" / "real_files.ref"
MPS = ["alloy", "furnace", "icecream", "murtagh", "plan", "samp1", "samp2"]
SDPA = ["example1"]
GLPK_DIR = pathlib.Path(os.environ.get("ZEM_GLPK_EXAMPLES", "/usr/share/doc/glpk-utils/examples"))
SDPA_DIR = pathlib.Path(os.environ.get("ZEM_SDPA_EXAMPLES", "/usr/share/sdpa/example"))
INF = math.inf


def locate(directory, name, tmp):
    """The file's path, decompressing name.gz into tmp when needed; None if absent."""
    p = directory / name
    if p.exists():
        return p
    gz = directory / (name + ".gz")
    if gz.exists():
        out = pathlib.Path(tmp) / name
        with gzip.open(gz, "rb") as src, open(out, "wb") as dst:
            shutil.copyfileobj(src, dst)
        return out
    return None


# ---- figures of a linear programme -------------------------------------------
# A model is: n columns with bounds (lo, up) and objective c, the objective
# constant, m rows with bounds, and the matrix entries {(i, j): a}, all
# 1-based.  The figures are counts and position-weighted sums, so that a
# value at the wrong place or a wrong value changes them.

def kind(lo, up):
    if lo == -INF and up == INF:
        return "free"
    if lo == up:
        return "fixed"
    if up == INF:
        return "lower"
    if lo == -INF:
        return "upper"
    return "double"


def figures(cols, rows, entries, constant):
    f = {"columns": len(cols), "rows": len(rows), "nonzeros": len(entries),
         "objective_nonzeros": sum(1 for c in cols if c[2] != 0.0)}
    for what, items in (("column", cols), ("row", rows)):
        counts = {}
        for lo, up, *_ in items:
            counts[kind(lo, up)] = counts.get(kind(lo, up), 0) + 1
        f[what + "_bound_kinds"] = dict(sorted(counts.items()))
        terms = [k * lo for k, (lo, up, *_) in enumerate(items, 1) if lo != -INF]
        terms += [2 * k * up for k, (lo, up, *_) in enumerate(items, 1) if up != INF]
        f[what + "_bound_sum"] = [math.fsum(terms), math.fsum(abs(t) for t in terms)]
    terms = [j * c[2] for j, c in enumerate(cols, 1)]
    f["objective_sum"] = [math.fsum(terms), math.fsum(abs(t) for t in terms)]
    f["objective_constant"] = constant
    terms = [(i + 1000 * j) * a for (i, j), a in entries.items()]
    f["matrix_sum"] = [math.fsum(terms), math.fsum(abs(t) for t in terms)]
    return f


def parse_glp(text):
    """glpsol's --wglp output: rows, columns, bounds, objective, matrix."""
    m = n = 0
    rows, cols, entries, obj, ints, constant = {}, {}, {}, {}, 0, 0.0
    names = {}

    def bounds(t, vals):
        v = [float(x) for x in vals]
        return {"f": (-INF, INF), "l": (v[0], INF) if v else None, "u": (-INF, v[0]) if v else None,
                "d": (v[0], v[1]) if len(v) > 1 else None, "s": (v[0], v[0]) if v else None}[t]

    for line in text.splitlines():
        w = line.split()
        if not w:
            continue
        if w[0] == "p":
            m, n = int(w[3]), int(w[4])
        elif w[0] == "i":
            rows[int(w[1])] = bounds(w[2], w[3:])
        elif w[0] == "j":
            if w[2] in ("c", "i", "b"):  # a MIP's columns carry their kind
                cols[int(w[1])] = bounds(w[3], w[4:])
                ints += w[2] in ("i", "b")
            else:
                cols[int(w[1])] = bounds(w[2], w[3:])
        elif w[0] == "a":
            i, j, v = int(w[1]), int(w[2]), float(w[3])
            if i == 0 and j == 0:
                constant = v
            elif i == 0:
                obj[j] = v
            else:
                entries[(i, j)] = v
        elif w[0] == "n" and w[1] == "j":
            names[w[3]] = int(w[2])
    # Rows without a line are fixed at 0 (an equation with a zero right-hand
    # side); columns without one are continuous in [0, inf).
    # side); columns without one are left as None, for the LP file to settle
    # (the glp file also leaves out integer columns in [0, 1]).
    row_list = [rows.get(i, (0.0, 0.0)) + (0.0,) for i in range(1, m + 1)]
    col_list = [cols.get(j, (None, None)) + (obj.get(j, 0.0),) for j in range(1, n + 1)]
    return col_list, row_list, entries, constant, ints, names


def parse_lp_bounds(text):
    """The Bounds section of glpsol's --wlp output, by column name (columns
    not listed are in [0, inf))."""
    m = re.search(r"(?ims)^bounds\s*$(.*?)^(generals|binaries|end)\s*$", text)
    out = {}
    val = lambda t: -INF if t.lower() in ("-inf", "-infinity") else INF if t.lower() in ("+inf", "inf", "+infinity") else float(t)
    for line in (m.group(1) if m else "").splitlines():
        w = line.split()
        if len(w) == 5 and w[1] == "<=" and w[3] == "<=":
            out[w[2]] = (val(w[0]), val(w[4]))
        elif len(w) == 3 and w[1] == ">=":
            out[w[0]] = (val(w[2]), INF)
        elif len(w) == 3 and w[1] == "<=":
            out[w[0]] = (0.0, val(w[2]))
        elif len(w) == 3 and w[1] == "=":
            out[w[0]] = (val(w[2]), val(w[2]))
        elif len(w) == 2 and w[1].lower() == "free":
            out[w[0]] = (-INF, INF)
        elif w:
            raise ValueError("bound line not understood: " + line)
    return out


def parse_lp_objective(text):
    """The objective of glpsol's --wlp output, by column name."""
    body = re.split(r"(?im)^\s*subject to\s*$", text)[0]
    body = re.split(r"(?im)^\s*(minimize|maximize)\s*$", body)[-1]
    body = body.split(":", 1)[1] if ":" in body else body
    coeffs, constant = {}, 0.0
    for sign, num, name in re.findall(r"([+-])\s*([0-9.eE+-]*)\s*([A-Za-z_][^\s+-]*)?", body):
        v = float(num) if num else 1.0
        v = -v if sign == "-" else v
        if name:
            coeffs[name] = coeffs.get(name, 0.0) + v
        else:
            constant += v
    return coeffs, constant


def parse_sdpa(text):
    """Reads SDPA sparse data (independently of the library)."""
    nums = []
    for line in text.splitlines():
        s = line.strip()
        if not s or s[0] in "\"*":
            continue
        nums.append([float(t) for t in re.split(r"[\s,{}()]+", s.split("=")[0]) if t])
    m, nblock = int(nums[0][0]), int(nums[1][0])
    sizes, k = [], 2
    while len(sizes) < nblock:
        sizes += [int(x) for x in nums[k]]
        k += 1
    c = []
    while len(c) < m:
        c += nums[k]
        k += 1
    offset = [0]
    for s in sizes:
        offset.append(offset[-1] + abs(s))
    per = [0] * (m + 1)
    terms = []
    for e in nums[k:]:
        mat, blk, i, j, v = int(e[0]), int(e[1]), int(e[2]), int(e[3]), e[4]
        per[mat] += 1
        gi, gj = offset[blk - 1] + i, offset[blk - 1] + j
        terms.append((mat + 1 + 100 * gi + 10000 * gj) * v)
    obj = [j * v for j, v in enumerate(c, 1)]
    return {"variables": m, "dimension": offset[-1], "entries_per_matrix": per,
            "objective_sum": [math.fsum(obj), math.fsum(abs(t) for t in obj)],
            "matrix_sum": [math.fsum(terms), math.fsum(abs(t) for t in terms)]}


# ---- what e04ry printed -------------------------------------------------------

def num(s):
    return -INF if s == "-inf" else INF if s == "inf" else float(s)


def parse_e04ry(text):
    out = {"overview": {}, "objective": {}, "constant": 0.0, "bounds": {}, "rows": {}, "entries": {},
           "matrices": {}, "matrix_entries": []}
    section, row, mat = None, None, None
    for line in text.splitlines():
        if line.startswith(" ") and not line.startswith("  "):
            section = line.strip()
            continue
        if section == "Overview":
            k, _, v = line.strip().partition(":")
            out["overview"][k] = v.strip()
        elif section == "Objective function":
            if line.strip() == "constant part":
                section = "constant"
            for j, v in re.findall(r"x\[(\d+)\]\s+(\S+)", line):
                out["objective"][int(j)] = float(v)
        elif section == "constant":
            if line.strip() == "linear part":
                section = "Objective function"
            else:
                out["constant"] = float(line.split()[0])
        elif section == "Simple bounds":
            w = re.match(r"\s*x\[(\d+)\]\s+(\S+)\s+(\S+)", line)
            if w:
                out["bounds"][int(w.group(1))] = (num(w.group(2)), num(w.group(3)))
        elif section == "Linear constraints (detailed)":
            w = re.match(r"\s*l\[(\d+)\]:\s+(\S+)\s+<=\s+\.\.\.\s+<=\s+(\S+)", line)
            if w:
                row = int(w.group(1))
                out["rows"][row] = (num(w.group(2)), num(w.group(3)))
            else:
                for j, v in re.findall(r"x\[(\d+)\]\s+(\S+)", line):
                    out["entries"][(row, int(j))] = float(v)
        elif section == "Matrix constraints (detailed)":
            w = re.match(r"\s*A_(\d+): (\d+) element", line)
            if w:
                mat = int(w.group(1))
                out["matrices"][mat] = int(w.group(2))
            else:
                for i, j, v in re.findall(r"\((\d+),(\d+)\)\s+(\S+)", line):
                    out["matrix_entries"].append((mat, int(i), int(j), float(v)))
            w = re.match(r"\s*Block \d+: dimension (\d+)", line)
            if w:
                out["dimension"] = int(w.group(1))
    return out


# ---- the two modes -------------------------------------------------------------

def generate():
    ref = {"mps": {}, "sdpa": {}}
    glpsol = shutil.which("glpsol")
    if not glpsol:
        sys.exit("glpsol (glpk-utils) is needed to generate the reference figures")
    with tempfile.TemporaryDirectory() as tmp:
        for name in MPS:
            path = locate(GLPK_DIR, name + ".mps", tmp)
            if path is None:
                sys.exit(f"{name}.mps not found in {GLPK_DIR}")
            glp, lp = pathlib.Path(tmp) / "out.glp", pathlib.Path(tmp) / "out.lp"
            run = subprocess.run([glpsol, "--check", "--mps", str(path), "--wglp", str(glp), "--wlp", str(lp)],
                                 capture_output=True, text=True, check=True)
            said = {k: int(v) for k, v in re.findall(r"Number of (rows|columns|non-zeros \(matrix\)|non-zeros \(objrow\))\s*=\s*(\d+)",
                                                     run.stdout)}
            cols, rows, entries, constant, ints, names = parse_glp(glp.read_text())
            lp_obj, lp_constant = parse_lp_objective(lp.read_text())
            lp_bounds = parse_lp_bounds(lp.read_text())
            for cname, j in names.items():
                lo_up = lp_bounds.get(cname, (0.0, INF))
                if cols[j - 1][0] is None:
                    cols[j - 1] = lo_up + cols[j - 1][2:]
                assert cols[j - 1][:2] == lo_up, (name, cname, cols[j - 1], lo_up)
            f = figures(cols, rows, entries, constant)
            # The reference must agree with itself: glpsol's counts, its glp
            # file and its LP file.
            assert said["rows"] == f["rows"] and said["columns"] == f["columns"], name
            assert said["non-zeros (matrix)"] == f["nonzeros"], name
            assert said["non-zeros (objrow)"] == f["objective_nonzeros"], name
            for cname, j in names.items():
                assert abs(lp_obj.get(cname, 0.0) - cols[j - 1][2]) <= 1e-12 * max(1.0, abs(cols[j - 1][2])), (name, cname)
            assert abs(lp_constant - constant) <= 1e-12 * max(1.0, abs(constant)), name
            f["integer_columns"] = ints
            ref["mps"][name] = f
        for name in SDPA:
            path = locate(SDPA_DIR, name + ".dat-s", tmp)
            if path is None:
                sys.exit(f"{name}.dat-s not found in {SDPA_DIR}")
            ref["sdpa"][name] = parse_sdpa(path.read_text())
    header = {"command": "python3 tools/e04_real_files.py --generate",
              "source": "glpsol --check --wglp --wlp (GLPK 5.0) on the MPS examples of glpk-utils; "
                        "an independent reading of the SDPA example of libsdpa-dev"}
    REF.write_text(json.dumps({"about": header, **ref}, indent=1) + "\n")
    print("wrote", REF)


def close(a, b):
    """A sum from printed values (6 significant digits) against the exact one."""
    return abs(a[0] - b[0]) <= 1e-5 * max(a[1], b[1]) + 1e-9


def check(program):
    ref = json.loads(REF.read_text())
    problems, checked, missing = [], 0, []
    with tempfile.TemporaryDirectory() as tmp:
        for kind_, names, directory, suffix in (("mps", MPS, GLPK_DIR, ".mps"), ("sdpa", SDPA, SDPA_DIR, ".dat-s")):
            for name in names:
                path = locate(directory, name + suffix, tmp)
                if path is None:
                    missing.append(name + suffix)
                    continue
                run = subprocess.run([program, kind_.upper(), str(path)], capture_output=True, text=True)
                if run.returncode != 0:
                    problems.append(f"{name}{suffix}: {run.stdout.strip()} {run.stderr.strip()}")
                    continue
                checked += 1
                got, want = parse_e04ry(run.stdout), ref[kind_][name]
                ov = got["overview"]

                def expect(what, a, b):
                    if a != b:
                        problems.append(f"{name}{suffix}: {what}: read {a}, reference {b}")

                if kind_ == "mps":
                    expect("overview No of variables", ov.get("No of variables"), str(want["columns"]))
                    expect("overview Linear constraints", ov.get("Linear constraints"),
                           str(want["rows"]) if want["rows"] else "not defined")
                    expect("overview Simple bounds", ov.get("Simple bounds"), str(want["columns"]))
                    n, m = want["columns"], want["rows"]
                    cols = [got["bounds"].get(j, (None, None)) + (got["objective"].get(j, 0.0),) for j in range(1, n + 1)]
                    rows = [got["rows"].get(i, (None, None)) for i in range(1, m + 1)]
                    if any(c[0] is None for c in cols) or any(r[0] is None for r in rows):
                        problems.append(f"{name}{suffix}: a column or row is missing from the printout")
                        continue
                    f = figures(cols, rows, got["entries"], got["constant"])
                    for key in ("nonzeros", "objective_nonzeros", "column_bound_kinds", "row_bound_kinds"):
                        expect(key, f[key], want[key])
                    expect("objective constant", round(f["objective_constant"], 6), round(want["objective_constant"], 6))
                    for key in ("column_bound_sum", "row_bound_sum", "objective_sum", "matrix_sum"):
                        if not close(f[key], want[key]):
                            problems.append(f"{name}{suffix}: {key}: read {f[key][0]!r}, reference {want[key][0]!r}")
                else:
                    expect("overview No of variables", ov.get("No of variables"), str(want["variables"]))
                    expect("overview Matrix constraints", ov.get("Matrix constraints"), "1")
                    expect("dimension", got.get("dimension"), want["dimension"])
                    expect("entries per matrix", [got["matrices"].get(k, 0) for k in range(want["variables"] + 1)],
                           want["entries_per_matrix"])
                    obj = [j * got["objective"].get(j, 0.0) for j in range(1, want["variables"] + 1)]
                    terms = [(k + 1 + 100 * i + 10000 * j) * v for k, i, j, v in got["matrix_entries"]]
                    for key, f in (("objective_sum", [math.fsum(obj), math.fsum(map(abs, obj))]),
                                   ("matrix_sum", [math.fsum(terms), math.fsum(map(abs, terms))])):
                        if not close(f, want[key]):
                            problems.append(f"{name}{suffix}: {key}: read {f[0]!r}, reference {want[key][0]!r}")
    for p in problems:
        print("problem:", p)
    if checked == 0:
        print(f"skipped: none of the example files is installed ({GLPK_DIR}, {SDPA_DIR}); "
              "tools/setup.sh installs glpk-utils and libsdpa-dev")
        return 77
    print(f"{checked} files read and compared" + (f"; not installed: {' '.join(missing)}" if missing else ""))
    return 1 if problems else 0


if __name__ == "__main__":
    if sys.argv[1:2] == ["--generate"]:
        generate()
    elif sys.argv[1:2] == ["--check"] and len(sys.argv) == 3:
        sys.exit(check(sys.argv[2]))
    else:
        sys.exit(__doc__)

#!/usr/bin/env python3
"""Checks the built site in headless Chromium: browser_check.py <html> <artefacts>.

Serves <html> on a loopback port and opens one page of its own in the
browser, which loads every page of the site in a frame and checks, on the
rendered document:
  - every routine page (XXXXX.html) shows its C and Fortran signatures (a
    visible code block naming XXXXXc( and one naming XXXXXf) and, in its
    Example section, the example programs;
  - the search page finds every routine by its long C name;
  - no link of any page is broken (the target answers, and its #anchor
    exists in it), and every picture is shown.
Screenshots of the home page, a routine page and a search result are kept
in <artefacts>.  Needs: chromium (Debian's package), python3.
"""
import functools
import http.server
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import time

html = pathlib.Path(sys.argv[1]).resolve()
artefacts = pathlib.Path(sys.argv[2]).resolve()
artefacts.mkdir(parents=True, exist_ok=True)
ROUTINE = re.compile(r"^[a-z]\d\d[a-z]{2}$")

pages = sorted(str(p.relative_to(html)) for p in html.rglob("*.html")
               if not str(p.relative_to(html)).startswith(("_", "search.html")))
routines = {}
for p in pages:
    stem = pathlib.Path(p).stem
    if "/" not in p and ROUTINE.match(stem):
        text = (html / p).read_text(encoding="utf-8")
        m = re.search(r"long name <code[^>]*><span class=\"pre\">(zem_\w+)</span>", text)
        routines[stem] = m.group(1) if m else ""
if not routines:
    sys.exit("no routine pages in " + str(html))

# Which example programs each routine page must show: its own, or else one
# of its chapter's that calls it (the rule of tools/site/build_site.py).  A
# routine with none is listed below, not failed: the check is that what
# exists is shown.
examples = pathlib.Path(__file__).resolve().parents[2] / "examples"
def has_example(stem, suffix, entry):
    if (examples / f"{stem}{suffix}").exists():
        return True
    return any(entry in q.read_text(encoding="utf-8", errors="replace").lower()
               for q in examples.glob(f"{stem[:3]}*{suffix[1:]}"))
shows = {s: {"c": has_example(s, "c.c", s + "c("), "f": has_example(s, "f.f90", s + "f(")} for s in routines}

CHECK_PAGE = """<!doctype html><html><head><meta charset="utf-8"><title>site check</title></head><body>
<pre id="result">running</pre>
<script>
const pages = %(pages)s, routines = %(routines)s, shows = %(shows)s;
const problems = [];
const docs = {};
function frame(url) {
  return new Promise(resolve => {
    const f = document.createElement('iframe');
    f.style.width = '1200px'; f.style.height = '900px';
    let done = false;
    const finish = ok => { if (!done) { done = true; resolve(ok ? f : null); } };
    f.onload = () => finish(true);
    setTimeout(() => finish(false), 20000);
    f.src = url;
    document.body.appendChild(f);
  });
}
const visible = el => { const r = el.getBoundingClientRect(); return r.width > 0 && r.height > 0; };
async function checkPage(p) {
  const f = await frame('/' + p);
  if (!f) { problems.push(p + ': did not load'); return; }
  const d = f.contentDocument;
  docs[p] = d;
  if (!d.title || !d.querySelector('h1')) problems.push(p + ': no title or heading');
  for (const img of d.querySelectorAll('img'))
    if (!img.complete || img.naturalWidth === 0) problems.push(p + ': picture not shown: ' + img.getAttribute('src'));
  const stem = p.replace(/\\.html$/, '');
  if (stem in routines) {
    const blocks = [...d.querySelectorAll('pre')].filter(visible);
    const sig = d.getElementById('signatures') || d.body;
    const sigBlocks = [...sig.querySelectorAll('pre')].filter(visible).map(b => b.textContent);
    if (!sigBlocks.some(t => t.includes(stem + 'c('))) problems.push(p + ': no visible C signature ' + stem + 'c(');
    if (!sigBlocks.some(t => t.toLowerCase().includes(stem + 'f('))) problems.push(p + ': no visible Fortran signature ' + stem + 'f(');
    const ex = d.getElementById('example') || d.getElementById('examples');
    if (!ex) problems.push(p + ': no Example section');
    else {
      const exBlocks = [...ex.querySelectorAll('pre')].filter(visible).map(b => b.textContent);
      if (shows[stem].c && !exBlocks.some(t => t.includes(stem + 'c'))) problems.push(p + ': no C example program shown');
      if (shows[stem].f && !exBlocks.some(t => t.toLowerCase().includes(stem + 'f'))) problems.push(p + ': no Fortran example program shown');
    }
    if (blocks.length === 0) problems.push(p + ': no code rendered');
  }
}
async function checkLinks() {
  const targets = new Map();
  for (const [p, d] of Object.entries(docs)) {
    for (const a of d.querySelectorAll('a[href]')) {
      const href = a.getAttribute('href');
      if (/^(mailto:|javascript:)/.test(href)) continue;
      const u = new URL(href, location.origin + '/' + p);
      if (u.origin !== location.origin) { problems.push(p + ': link leaves the site: ' + href); continue; }
      const key = u.pathname + u.hash;
      if (!targets.has(key)) targets.set(key, p);
    }
  }
  const fetched = {};
  for (const [key, from] of targets) {
    const [path, hash] = key.split('#');
    const page = path.replace(/^\\//, '');
    let doc = docs[page];
    if (!doc) {
      if (!(path in fetched)) {
        const r = await fetch(path).catch(() => null);
        fetched[path] = r && r.ok ? await r.text() : null;
      }
      if (fetched[path] === null) { problems.push(from + ': broken link to ' + key); continue; }
      if (hash && /\\.html$/.test(path)) doc = new DOMParser().parseFromString(fetched[path], 'text/html');
    }
    if (hash && doc && !doc.getElementById(decodeURIComponent(hash)))
      problems.push(from + ': link to a missing anchor ' + key);
  }
  return targets.size;
}
async function checkSearch(stem, name) {
  const f = await frame('/search.html?q=' + encodeURIComponent(name));
  if (!f) { problems.push('search for ' + name + ': page did not load'); return; }
  for (let i = 0; i < 200; i++) {
    const hits = [...f.contentDocument.querySelectorAll('#search-results li a')].map(a => a.getAttribute('href'));
    if (hits.some(h => h.split(/[?#]/)[0].replace(/^\\.?\\//, '') === stem + '.html')) { f.remove(); return; }
    const summary = f.contentDocument.querySelector('#search-results .search-summary');
    if (summary && summary.textContent.trim() && hits.length === 0 && i > 20) break;
    await new Promise(r => setTimeout(r, 100));
  }
  problems.push('search for ' + name + ' does not find ' + stem + '.html');
}
(async () => {
  for (let i = 0; i < pages.length; i += 8) await Promise.all(pages.slice(i, i + 8).map(checkPage));
  const links = await checkLinks();
  const named = Object.entries(routines).filter(([s, n]) => n);
  for (let i = 0; i < named.length; i += 6) await Promise.all(named.slice(i, i + 6).map(([s, n]) => checkSearch(s, n)));
  const unnamed = Object.entries(routines).filter(([s, n]) => !n).map(([s, n]) => s);
  document.getElementById('result').textContent = JSON.stringify(
    {pages: Object.keys(docs).length, routines: Object.keys(routines).length, searches: named.length, links,
     without_long_name: unnamed, problems});
})().catch(e => { document.getElementById('result').textContent = JSON.stringify({problems: ['check failed: ' + e]}); });
</script></body></html>
"""


class Handler(http.server.SimpleHTTPRequestHandler):
    def do_GET(self):
        if self.path == "/__site_check__.html":
            body = (CHECK_PAGE % {"pages": json.dumps(pages), "routines": json.dumps(routines),
                                  "shows": json.dumps(shows)}).encode()
            self.send_response(200)
            self.send_header("Content-Type", "text/html; charset=utf-8")
            self.send_header("Content-Length", str(len(body)))
            self.end_headers()
            self.wfile.write(body)
        else:
            super().do_GET()

    def log_message(self, *args):
        pass


class Server(http.server.ThreadingHTTPServer):
    def handle_error(self, request, client_address):
        pass  # the browser closing a connection early is no problem of the site


server = Server(("127.0.0.1", 0), functools.partial(Handler, directory=str(html)))
threading.Thread(target=server.serve_forever, daemon=True).start()
base = f"http://127.0.0.1:{server.server_address[1]}"
browser = shutil.which("chromium") or shutil.which("chromium-browser")
if not browser:
    sys.exit("chromium is not installed (Debian: apt-get install chromium)")
profile = tempfile.mkdtemp(prefix="zem-chromium-")
FLAGS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
         "--disable-background-networking", "--disable-component-update", "--disable-sync",
         "--disable-dev-shm-usage", "--hide-scrollbars", f"--user-data-dir={profile}"]


def chromium(*args, timeout=600):
    return subprocess.run([browser, *FLAGS, *args], capture_output=True, text=True, timeout=timeout)


try:
    start = time.monotonic()
    run = chromium("--virtual-time-budget=600000", "--window-size=1300,1000", "--dump-dom",
                   base + "/__site_check__.html")
    m = re.search(r'<pre id="result">(.*?)</pre>', run.stdout, re.S)
    if not m or m.group(1) == "running":
        sys.exit("the check page did not finish\n" + run.stderr[-2000:])
    import html as htmlmod
    report = json.loads(htmlmod.unescape(m.group(1)))
    first = next((r for r in sorted(routines) if routines[r]), sorted(routines)[0])
    shots = [("home.png", "/index.html"), (f"{first}.png", f"/{first}.html"),
             ("search.png", "/search.html?q=" + (routines[first] or first))]
    for name, path in shots:
        chromium("--virtual-time-budget=10000", "--window-size=1280,1400", f"--screenshot={artefacts / name}",
                 base + path, timeout=120)
        if not (artefacts / name).exists():
            report.setdefault("problems", []).append("no screenshot " + name)
    seconds = time.monotonic() - start
finally:
    server.shutdown()
    shutil.rmtree(profile, ignore_errors=True)

(artefacts / "site_check.json").write_text(json.dumps(report, indent=1))
for problem in report.get("problems", []):
    print("problem:", problem)
print(f"browser check: {report.get('pages')} pages, {report.get('routines')} routine pages, "
      f"{report.get('searches')} searches, {report.get('links')} link targets, "
      f"{len(report.get('problems', []))} problems, {seconds:.1f} s; screenshots in {artefacts}")
if report.get("without_long_name"):
    print("routines without a long C name:", " ".join(report["without_long_name"]))
missing = [s for s in sorted(shows) if not (shows[s]["c"] and shows[s]["f"])]
if missing:
    print("routines without an example program in both interfaces:", " ".join(missing))
sys.exit(1 if report.get("problems") else 0)

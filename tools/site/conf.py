# Sphinx configuration of the documentation site (staged by build_site.py,
# built by tools/docs.sh).
project = "Zem"
author = "The Zem developers"
copyright = "2026, The Zem developers"
extensions = ["myst_parser"]
source_suffix = {".md": "markdown"}
root_doc = "index"
myst_heading_anchors = 3
myst_enable_extensions = ["colon_fence"]
# Pages start at any heading level they like.
suppress_warnings = ["myst.header"]
html_theme = "alabaster"
html_title = "Zem documentation"
html_theme_options = {"page_width": "1100px", "sidebar_width": "260px", "fixed_sidebar": True,
                      "show_powered_by": False}
html_show_sphinx = False
html_sidebars = {"**": ["about.html", "searchbox.html", "navigation.html", "relations.html"]}
html_show_sourcelink = False
highlight_language = "none"

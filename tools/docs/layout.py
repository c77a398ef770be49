#!/usr/bin/env python3
"""layout.py: prints the layout of the interface pages for Doxygen: the menu, with the services first, in the order of
docs/services.md. A page that no group names is listed in the last one.
"""
import pathlib
import re
import sys
from xml.sax.saxutils import quoteattr

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
GROUPS = [
    ("Records", ["docs/wire-format.md", "docs/adding-a-record.md"]),
    ("Guides", ["docs/migration.md", "docs/zvuti.md", "docs/windows.md"]),
    ("Rules", ["docs/reliability.md", "SECURITY.md", "docs/architecture.md", "CONTRIBUTING.md"]),
    ("Performance", ["docs/performance.md", "benchmarks/results.md"]),
]


def title(page):
    return next(line[2:] for line in (ROOT / page).read_text(encoding="utf-8").splitlines() if line.startswith("# "))


def tab(page, name=None):
    label = "md_" + re.sub(r"\W", "_", page.removesuffix(".md"))
    return f"<tab type=\"user\" url=\"@ref {label}\" title={quoteattr(name or title(page))}/>"


def group(name, tabs):
    return [f'<tab type="usergroup" title={quoteattr(name)}>', *tabs, "</tab>"]


services = re.findall(r"^\| \[([^\]]*)\]\((services/[\w-]+\.md)\)", (ROOT / "docs/services.md").read_text(encoding="utf-8"), re.M)
if not services:
    sys.exit("layout: docs/services.md lists no services")
groups = [(name, [page for page in pages if (ROOT / page).exists()]) for name, pages in GROUPS]
named = {"README.md", "docs/services.md", *(f"docs/{page}" for _, page in services), *(page for _, pages in groups for page in pages)}
rest = [page for page in sys.argv[1:] if page not in named]
lines = ['<doxygenlayout version="1.0">', '<navindex>', '<tab type="mainpage" visible="yes" title="Start"/>',
         *group("Services", [tab("docs/services.md", "All services"), *(tab(f"docs/{page}", name) for name, page in services)])]
for name, pages in groups:
    lines += group(name, [tab(page) for page in pages])
lines += group("Interface", ['<tab type="classlist" visible="yes" title="Classes and records"/>',
                             '<tab type="filelist" visible="yes" title="Headers"/>',
                             '<tab type="namespacemembers" visible="yes" title="Functions in zvuti"/>'])
lines += [*group("More", [tab(page) for page in rest]), "</navindex>", "</doxygenlayout>"]
print("\n".join(lines))

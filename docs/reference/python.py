# SPDX-License-Identifier: MIT
"""python.py SOURCE_DIR OUTPUT_DIR

Writes the reference of the Python package from its docstrings, OUTPUT_DIR/index.html:
by pdoc if it is installed, which Debian 12 has no package of, else by pydoc.
"""
import importlib
import importlib.util
import pathlib
import pydoc
import re
import shutil
import subprocess
import sys


def make_package(source, site):
    """The package with what is made from the headers."""
    shutil.rmtree(site, ignore_errors=True)
    shutil.copytree(source / "python/src/swctl", site / "swctl", ignore=shutil.ignore_patterns("__pycache__"))
    subprocess.run([sys.executable, source / "python/generate", site / "swctl"], check=True,
                   stdout=subprocess.DEVNULL)


def modules(site):
    """The names of the public modules."""
    for path in sorted((site / "swctl").rglob("*.py")):
        words = path.relative_to(site).with_suffix("").parts
        if words[-1] == "__init__":
            yield ".".join(words[:-1])
        elif not words[-1].startswith("_") and words[-1] != "pytest_plugin":
            yield ".".join(words)


def write_by_pydoc(names, output):
    html, lines = pydoc.HTMLDoc(), []
    for name in names:
        module = importlib.import_module(name)
        page = html.page(name, html.document(module, name))
        # Where a module lies on this machine is nobody's business.
        page = re.sub(r'<a href="file:[^"]*">[^<]*</a>', "", page)
        (output / f"{name}.html").write_text(page)
        lines.append(f'<li><a href="{name}.html">{name}</a>: {pydoc.splitdoc(module.__doc__)[0]}</li>')
    listing = "<ul>" + "\n".join(lines) + "</ul>"
    (output / "index.html").write_text(html.page("swctl for Python", f"<h1>swctl for Python</h1>{listing}"))


def main():
    source, output = (pathlib.Path(word).resolve() for word in sys.argv[1:3])
    site = output.parent / "python-site"
    output.mkdir(parents=True, exist_ok=True)
    make_package(source, site)
    sys.path.insert(0, str(site))
    names = list(modules(site))
    if importlib.util.find_spec("pdoc"):
        subprocess.run([sys.executable, "-m", "pdoc", "-d", "google", "-o", output, *names], check=True,
                       env={"PYTHONPATH": str(site)})
    else:
        write_by_pydoc(names, output)
    print(f"reference: {len(names)} modules of Python; {output}/index.html")


main()

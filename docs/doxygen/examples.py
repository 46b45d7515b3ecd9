# SPDX-License-Identifier: MIT
"""Shows Doxygen the examples: a page for each, with its sources and links from them into the reference."""
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = ROOT / "examples"


def sources(folder):
    """What is worth reading, the program first."""
    return sorted((file for file in folder.iterdir() if file.suffix in (".cc", ".h", ".py", ".txt", ".ui", ".vbs")),
                  key=lambda file: (file.suffix in (".txt", ".ui"), file.name not in ("main.cc", "host.cc"), file.name))


def folders():
    return sorted(folder for folder in EXAMPLES.iterdir() if folder.is_dir() and sources(folder))


def label(file):
    """The name of the page on which an example stands."""
    return "page_examples_" + file.relative_to(EXAMPLES).parts[0] if file != EXAMPLES else "page_examples"


def said(file):
    """What the comment above a program says of it."""
    text = file.read_text(encoding="utf-8")
    if file.suffix == ".py":
        found = re.search(r'"""(.*?)"""', text, re.S)
        return " ".join(found[1].split()) if found else ""
    found = re.search(r"^// SPDX.*\n((?:// ?.*\n)+)", text)
    return " ".join(re.sub(r"^// ?", "", found[1], flags=re.M).split()) if found else ""


def pages(in_words):
    """The text of all pages; `in_words` makes Doxygen's of a comment."""
    shown = [f"# Examples {{#{label(EXAMPLES)}}}", "", "Programs that are built with the tree, and each alone; they lie in `examples`.", ""]
    for folder in folders():
        shown.append(f"- \\subpage {label(folder)} \"{folder.name}\": {in_words(said(sources(folder)[0]))}")
    texts = {"examples.md": "\n".join(shown) + "\n"}
    for folder in folders():
        shown = [f"# {folder.name} {{#{label(folder)}}}", "", in_words(said(sources(folder)[0])), ""]
        for file in sources(folder):
            shown += [f"## {file.name}", "", f"\\include {file.relative_to(EXAMPLES).as_posix()}", ""]
        texts[f"examples/{folder.name}.md"] = "\n".join(shown) + "\n"
    return texts

# SPDX-License-Identifier: MIT
"""Shows Doxygen a page of the repository so that its links lead to the same places in the book: to pages and their headings, to
the classes of public headers, to pictures (copied to images/) and to examples. What the book does not have becomes
plain text. The pages are a tree: below NAME.md are those of the folder NAME, below a README.md those beside it, all others below
index.md; each in the order in which the page above leads to them, and every page has to be led to."""
import functools
import html
import os
import pathlib
import re

import examples

ROOT = pathlib.Path(__file__).resolve().parents[2]
LINK = re.compile(r"(!?)\[([^\]]*)\]\(([^)\s]+)\)")
SPANS = re.compile(r"(`[^`]*`)")
CONTENTS = ROOT / "docs/index.md"


def slug(heading):
    """The anchor that a heading has on the pages of a repository."""
    words = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", heading).replace("`", "").strip().lower()
    return re.sub(r"[^\w\- ]", "", words).replace(" ", "-")


def label(page, anchor=""):
    """The name of a page or a heading for Doxygen, which takes plain letters only."""
    name = "page_" + page.relative_to(ROOT).as_posix().removesuffix(".md")
    text = f"{name}--{anchor}" if anchor else name
    return re.sub(r"[^A-Za-z0-9_-]", lambda sign: "_" if ord(sign[0]) < 128 else f"x{ord(sign[0]):x}", text)


def in_book(page):
    return page.suffix == ".md" and page.is_file() and ROOT in page.parents and page.relative_to(ROOT).parts[0] == "docs"


def above(page):
    """The page of which it is a chapter, or nothing for the first one."""
    for parent in (page.parent / "README.md", page.parent.with_suffix(".md")):
        if parent.is_file() and parent != page:
            return parent
    return None if page == CONTENTS else CONTENTS


def target_of(page, target):
    """The file that a link leads to; for a folder of pages the one above them."""
    path = target.partition("#")[0]
    file = pathlib.Path(os.path.normpath(page.parent / path)) if path else page
    return file / "README.md" if in_book(file / "README.md") else file


@functools.cache
def chapters(page):
    """The pages below it, in order."""
    led = [target_of(page, target) for _, _, target in LINK.findall(page.read_text(encoding="utf-8"))]
    below = [file for file in dict.fromkeys(led) if in_book(file) and above(file) == page]
    missing = [file.name for file in sorted((ROOT / "docs").rglob("*.md")) if above(file) == page and file not in below]
    if missing:
        raise LookupError(f"{page.relative_to(ROOT)} leads to no {', '.join(missing)}")
    return below


def in_order(page=CONTENTS):
    """All pages, as a book has them."""
    return [page, *(each for chapter in chapters(page) for each in in_order(chapter))]


@functools.cache
def title(page):
    return re.search(r"^# (.*)$", page.read_text(encoding="utf-8"), re.M)[1].replace("`", "")


@functools.cache
def classes():
    """The full names of public classes by what pages call them: qt::SheetWidget, and SheetWidget where that is two words."""
    found = {}
    declared = r"^namespace stockbook::(\w+) \{|^(?:class|struct|enum class) (?:STOCKBOOK_API )?(\w+)(?: final)?(?: : [^;{]*)? \{"
    for header in sorted((ROOT / "include").rglob("*.h")):
        room = ""
        for space, name in re.findall(declared, header.read_text(encoding="utf-8"), re.M):
            room = space or room
            if name:
                full = f"stockbook::{room}::{name}"
                found[full] = found[f"{room}::{name}"] = full
                if re.match(r"[A-Z]\w*[a-z][A-Z]", name):
                    found[name] = full
    return found


def lead(page, below, found):
    picture, words, target = found.groups()
    if re.match(r"[a-z]+:", target):
        return found[0]
    anchor = target.partition("#")[2]
    file = target_of(page, target)
    inside = file.relative_to(ROOT).as_posix() if ROOT in file.parents else ""
    if picture:
        return f'<img src="images/{inside.removeprefix("docs/")}" alt="{words}"/>'
    if in_book(file):
        if words.endswith(".md"):
            words = title(file)
        if not anchor and file in below:
            below.remove(file)
            words = words.replace('"', "'")
            return f'\\subpage {label(file)} "{words}"'
        return f"[{words}](@ref {label(file, anchor)})"
    if inside.startswith("examples") and file.exists():
        return f"[{words}](@ref {examples.label(file)})"
    if inside.startswith("include/") and words.strip("`") in classes():
        return words
    return words if "`" in words else f"`{words}`" if "/" in words else words


def in_words(part):
    """A piece of a paragraph, with what Doxygen would take for a command, a link or a tag as plain signs."""
    if part.startswith("`") and part[1:-1] in classes():
        return f'<code>@ref {classes()[part[1:-1]]} "{part[1:-1]}"</code>'
    if part.startswith("`::"):
        return f"<code>\\{part[1:-1]}</code>"
    if part.startswith("`") and "'" in part:
        # To Doxygen an apostrophe ends what a ` began.
        return f"<code>{html.escape(part[1:-1], quote=False)}</code>"
    if part.startswith("`"):
        return part
    return re.sub(r"<(?=[A-Z])|(?<![\w-])--(?=\w)|@(?!ref )", r"\\\g<0>", part)


def of_words(block):
    return "".join(in_words(part) for part in SPANS.split(block))


def show(page):
    shown, code, titled = [], False, False
    anchors = {}
    text = re.sub(r"<!--.*?-->\n", "", page.read_text(encoding="utf-8"), flags=re.S)
    for line in text.splitlines():
        fence = re.match(r"( *)```(\w*)", line)
        if fence:
            code = not code
            shown.append(fence[1] + ("~~~~~~" + (f"{{.{fence[2]}}}" if fence[2] else "") if code else "~~~~~~"))
            continue
        heading = None if code else re.match(r"(#+) (.*)$", line)
        if heading:
            anchor = slug(heading[2])
            count = anchors[anchor] = anchors.get(anchor, -1) + 1
            if count:
                anchor += f"-{count}"
            name = label(page, anchor) if titled else label(page)
            titled = True
            shown.append(f"{heading[1]} {heading[2].replace('`', '')} {{#{name}}}")
        else:
            shown.append(line)
    # To Doxygen the pages below the first one stand beside it, or its tree would not show them.
    text, below = [], [] if page == CONTENTS else list(chapters(page))
    # Outside of code: links first, whole paragraphs at a time, since their words may go over the end of a line.
    for block in re.split(r"(~~~~~~[^\n]*\n.*?~~~~~~)", "\n".join(shown), flags=re.S):
        if not block.startswith("~~~~~~"):
            block = LINK.sub(lambda found: lead(page, below, found), block)
            block = of_words(block)
        text.append(block)
    return "".join(text) + "\n"


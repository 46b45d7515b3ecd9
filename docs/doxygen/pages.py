# SPDX-License-Identifier: MIT
"""Shows Doxygen a page of the repository so that its links lead to the same places in the book: to pages and their headings, to
pictures (copied to images/) and to examples (beside the book). What the book does not have becomes plain text."""
import html
import os
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]
LINK = re.compile(r"(!?)\[([^\]]*)\]\(([^)\s]+)\)")
SPANS = re.compile(r"(`[^`]*`)")


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


def lead(page, found):
    picture, words, target = found.groups()
    if re.match(r"[a-z]+:", target):
        return found[0]
    path, _, anchor = target.partition("#")
    file = pathlib.Path(os.path.normpath(page.parent / path)) if path else page
    inside = file.relative_to(ROOT).as_posix() if ROOT in file.parents else ""
    if picture:
        return f'<img src="images/{inside.removeprefix("docs/")}" alt="{words}"/>'
    if in_book(file):
        return f"[{words}](@ref {label(file, anchor)})"
    if inside.startswith("examples/"):
        return f'<a href="../{inside}">{words}</a>'
    return words if "`" in words else f"`{words}`" if "/" in words else words


def in_words(part):
    """A piece of a paragraph, with what Doxygen would take for a command, a link or a tag as plain signs."""
    if part.startswith("`::"):
        return f"<code>\\{part[1:-1]}</code>"
    if part.startswith("`") and "'" in part:
        # To Doxygen an apostrophe ends what a ` began.
        return f"<code>{html.escape(part[1:-1], quote=False)}</code>"
    if part.startswith("`"):
        return part
    return re.sub(r"<(?=[A-Z])", r"\\<", re.sub(r"@(?!ref )", r"\\@", part))


def show(page):
    shown, code, title = [], False, False
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
            name = label(page, anchor) if title else label(page)
            title = True
            shown.append(f"{heading[1]} {heading[2].replace('`', '')} {{#{name}}}")
        else:
            shown.append(line)
    text, code = [], False
    # Outside of code: links first, whole paragraphs at a time, since their words may go over the end of a line.
    for block in re.split(r"(~~~~~~[^\n]*\n.*?~~~~~~)", "\n".join(shown), flags=re.S):
        if not block.startswith("~~~~~~"):
            block = LINK.sub(lambda found: lead(page, found), block)
            parts = SPANS.split(block)
            block = "".join(in_words(part) for part in parts)
        text.append(block)
    return "".join(text) + "\n"


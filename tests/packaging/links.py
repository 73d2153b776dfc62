"""Follows the links and pictures of pages, wherever these lie."""

import posixpath
import re


def anchors(page):
    """What the headings of a page are called in links."""
    headings = re.findall(r"^#+ (.+)$", page, re.MULTILINE)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def follow(start, files):
    """The pages that are reached from the page START, and the links among them that lead nowhere, as "page: link". FILES is
    what there is, path by path; links to elsewhere in the world are not followed."""
    reached, dead, waiting = {start}, [], [start]
    while waiting:
        page = waiting.pop()
        for link in re.findall(r"\]\(([^)\s]+)\)", files[page].decode()):
            if re.match(r"\w+:", link):
                continue
            path, _, anchor = link.partition("#")
            target = posixpath.normpath(posixpath.join(posixpath.dirname(page), path)) if path else page
            if target not in files or (anchor and anchor not in anchors(files[target].decode())):
                dead.append(f"{page}: {link}")
            elif target not in reached:
                reached.add(target)
                waiting += [target] if target.endswith(".md") else []
    return reached, dead

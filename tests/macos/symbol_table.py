"""symbols.tsv: what is publicly known of the platform's interfaces that Trovel uses."""

import csv
import re


def rows(path):
    with open(path, encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file, delimiter="\t", quoting=csv.QUOTE_NONE))


def selectors(row):
    """The selectors of a method, or of a property's accessors."""
    method = re.match(r"[-+]\[\w+ (.*)\]", row["name"])
    if method:
        return {method.group(1)}
    if row["kind"] != "property":
        return set()
    name, signature = row["name"].split(".")[1], row["signature"]
    getter = re.search(r"getter\s*=\s*(\w+)", signature)
    accessors = {getter.group(1) if getter else name}
    if "readonly" not in signature:
        accessors.add(f"set{name[0].upper()}{name[1:]}:")
    return accessors

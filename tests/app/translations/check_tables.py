#!/usr/bin/python3
"""Fails when a string table lacks a text that the sources ask for, has one that nobody asks for, or leaves the house
style: check_tables.py SOURCES."""
import re
import sys
import xml.etree.ElementTree
from collections import Counter
from pathlib import Path

SOURCES = Path(sys.argv[1])
HAN = "[\u4e00-\u9fff]"
ANYWHERE = {
    "no text of its own": r"^\s|\s$|^$",
    "another system's word": r"\bMac\b|macOS|System Settings|Finder|访达",
    "three dots": r"\.\.\.",
    "a placeholder that is not the only %1": r"%(?!1)|%.*%",
    "narrow punctuation in Chinese": rf"{HAN}[,.:;?!()\"']|[,:;?!()\"']{HAN}",
    "no space between scripts": rf"{HAN}[A-Za-z0-9%⌘]|[A-Za-z0-9⌘]{HAN}",
}
# Hotkeys belong to the service, so no text may promise which keys they are.
KEY_NAMES = r"Ctrl|Control|Alt\b|Shift|Esc\b|Cmd|Command|Super|[⌘⌥⌃⇧⎋]|F\d"
LANGUAGES = {"about.language.en": "English", "about.language.zh": "中文"}

tables = {}
for file in (SOURCES / "app/translations").glob("quorbit_*.ts"):
    tables[file.stem] = [(message.get("id"), message.findtext("translation") or "")
                         for message in xml.etree.ElementTree.parse(file).iter("message")]
english = dict(tables["quorbit_en"])
# Whatever looks like a key counts: some views keep their keys in tables.
groups = "|".join({key.split(".")[0] for key in english})
code = "\n".join(file.read_text() for file in SOURCES.rglob("*") if file.suffix in (".cpp", ".h"))
asked = {one or other for one, other in re.findall(rf'qtTrId\(\s*"([^"]*)"|"((?:{groups})\.[a-z][a-z_.]*)"', code)}

faults = []
for table, entries in sorted(tables.items()):
    faults += [(table, key, "is missing") for key in asked - dict(entries).keys()]
    faults += [(table, key, "stands twice") for key, count in Counter(key for key, _ in entries).items() if count > 1]
    for key, text in entries:
        broken = [rule for rule, pattern in ANYWHERE.items() if re.search(pattern, text)]
        broken += ["nobody asks for it"] * (key not in asked) + ["its key"] * (text == key)
        broken += ["another placeholder than in English"] * (text.count("%") != english.get(key, "").count("%"))
        broken += ["the name of a key"] * ("hotkey" in key and bool(re.search(KEY_NAMES, text)))
        broken += ["Chinese"] * (table == "quorbit_en" and key not in LANGUAGES and bool(re.search(HAN, text)))
        broken += ["a language not by its own name"] * (LANGUAGES.get(key, text) != text)
        faults += [(table, key, fault) for fault in broken]
for fault in faults:
    print(*fault, sep=": ")
sys.exit(not asked or bool(faults))

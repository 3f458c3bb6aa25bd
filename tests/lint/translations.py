#!/usr/bin/env python3
"""Checks Inkwarden's translations: translations/inkwarden_<language>.ts.

Usage: translations.py <source folder> [<lupdate>]

- Every file holds exactly the texts the sources have today: lupdate, run over the sources into a
  copy of the file, changes nothing in it (a text added, changed or removed in the code without
  `cmake --build <build> --target update_translations` fails here).
- Every text is translated: no unfinished, vanished or obsolete entries, no empty translation, and a
  counted text has every plural form the language needs.
- Every translation keeps the placeholders (%1, %2, %n, %L1 …) of its source, each as many times.
"""

import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

PLACEHOLDER = re.compile(r"%L?(?:n|\d+)")
# Plural forms per language, as Qt counts them (qtbase's numerus rules).
PLURAL_FORMS = {"de": 2, "fr": 2, "es": 2, "it": 2, "ja": 1}


def placeholders(text):
    return sorted(PLACEHOLDER.findall(text or ""))


def check_file(path):
    problems = []
    root = ET.parse(path).getroot()
    language = (root.get("language") or "").split("_")[0]
    if language not in PLURAL_FORMS:
        problems.append(f"{path.name}: language attribute {root.get('language')!r} is not one of ours")
        return problems, 0
    count = 0
    for context in root.iter("context"):
        context_name = context.findtext("name")
        for message in context.iter("message"):
            count += 1
            source = message.findtext("source")
            where = f"{path.name}: {context_name}: {source!r}"
            translation = message.find("translation")
            if translation is None:
                problems.append(f"{where}: no translation")
                continue
            kind = translation.get("type")
            if kind in ("unfinished", "vanished", "obsolete"):
                problems.append(f"{where}: {kind}")
            if message.get("numerus") == "yes":
                forms = [form.text or "" for form in translation.iter("numerusform")]
                if len(forms) != PLURAL_FORMS[language]:
                    problems.append(f"{where}: {len(forms)} plural forms, {language} needs {PLURAL_FORMS[language]}")
                texts = forms
            else:
                texts = [translation.text or ""]
            for text in texts:
                if not text.strip():
                    problems.append(f"{where}: empty translation")
                elif placeholders(text) != placeholders(source):
                    problems.append(f"{where}: placeholders {placeholders(text)} in {text!r}, "
                                    f"the source has {placeholders(source)}")
    return problems, count


def check_in_sync(source_folder, ts_files, lupdate):
    sources = sorted(str(p) for pattern in ("*/*.cpp", "*/*.h", "*/*.qml", "main.cpp")
                     for p in (source_folder / "InkwardenMenuBar").glob(pattern))
    problems = []
    with tempfile.TemporaryDirectory() as scratch:
        copies = []
        for ts in ts_files:
            copy = pathlib.Path(scratch) / ts.name
            shutil.copyfile(ts, copy)
            copies.append(copy)
        result = subprocess.run([lupdate, "-no-obsolete", "-locations", "none", "-silent", *sources,
                                 "-ts", *map(str, copies)], capture_output=True, text=True, timeout=300)
        if result.returncode != 0:
            return [f"lupdate failed: {result.stderr.strip()}"]
        for ts, copy in zip(ts_files, copies):
            if ts.read_bytes() != copy.read_bytes():
                problems.append(f"{ts.name} is not what lupdate makes of the sources; run "
                                "`cmake --build <build> --target update_translations`")
    return problems


def main():
    source_folder = pathlib.Path(sys.argv[1])
    lupdate = sys.argv[2] if len(sys.argv) > 2 else "/usr/lib/qt6/bin/lupdate"
    ts_files = sorted((source_folder / "translations").glob("inkwarden_*.ts"))
    languages = sorted(ts.stem.split("_", 1)[1] for ts in ts_files)
    problems = []
    if languages != sorted(PLURAL_FORMS):
        problems.append(f"translations for {languages}, expected {sorted(PLURAL_FORMS)}")
    counts = {}
    for ts in ts_files:
        file_problems, counts[ts.name] = check_file(ts)
        problems += file_problems
    problems += check_in_sync(source_folder, ts_files, lupdate)
    for ts, count in counts.items():
        print(f"{ts}: {count} texts")
    if problems:
        print(f"{len(problems)} problems:")
        for problem in problems:
            print("  " + problem)
        return 1
    print("every translation is complete and in step with the sources")
    return 0


if __name__ == "__main__":
    sys.exit(main())

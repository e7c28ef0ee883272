#!/usr/bin/env python3
"""Checks data/loglang.txt, the table of interface words, before it ships.

The file is read the way the program reads it: quoted fields separated by commas or
line ends, first the two counts, then one name and one help file per language, then
for every string one field per language.  On top of that the file is expected to hold
one string per line.  Column 1 (English) is the reference every other column is held to:

- no cell is empty where English has text;
- a cell has as many '&' as English, and an '&' stands before a letter;
- the top-level menus keep distinct mnemonics within a language;
- leading and trailing blanks, and runs of two or more blanks, are as in English.

Usage: scripts/check-loglang.py [path] [--languages N] [--strings N]
Exit status 0 when the file passes, 1 otherwise.
"""
import argparse
import pathlib
import re
import sys

# Rows whose captions stand side by side on the main window's menu bar.
MENU_BAR_ROWS = (20, 31, 32, 33, 34, 37, 38, 41)


def parse_line(line, lineno, errors):
    """Splits one line into its quoted fields; anything else is an error."""
    fields = []
    pos = 0
    while True:
        if pos >= len(line) or line[pos] != '"':
            errors.append(f"line {lineno}: field {len(fields) + 1} does not start with a quote")
            return fields
        close = line.find('"', pos + 1)
        if close < 0:
            errors.append(f"line {lineno}: field {len(fields) + 1} has no closing quote")
            return fields
        fields.append(line[pos + 1:close])
        pos = close + 1
        if pos == len(line):
            return fields
        if line[pos] != ',':
            errors.append(f"line {lineno}: stray text after field {len(fields)} (a quote inside a text?)")
            return fields
        pos += 1


def edge_blanks(text):
    return len(text) - len(text.lstrip(' ')), len(text) - len(text.rstrip(' '))


def blank_runs(text):
    return [len(m) for m in re.findall(r' {2,}', text)]


def mnemonic(text):
    i = text.find('&')
    return text[i + 1].lower() if 0 <= i < len(text) - 1 else None


def check(path, want_languages, want_strings):
    errors = []
    raw = pathlib.Path(path).read_bytes()
    if raw.startswith(b'\xef\xbb\xbf'):
        errors.append("the file starts with a byte order mark")
    try:
        text = raw.decode('utf-8')
    except UnicodeDecodeError as e:
        return [f"not UTF-8: {e}"], None
    if '\r' in text:
        errors.append("the file has carriage returns")
    if '\t' in text:
        errors.append("the file has tabs")
    lines = text.split('\n')
    if lines and lines[-1] == '':
        lines.pop()

    rows = [parse_line(line, i + 1, errors) for i, line in enumerate(lines)]
    if len(rows) < 3:
        return errors + ["fewer than three lines"], None
    counts = rows[0]
    if len(counts) != 2 or not all(c.isdigit() for c in counts):
        return errors + [f"line 1: two decimal counts expected, got {counts}"], None
    languages, strings = int(counts[0]), int(counts[1])
    if languages != want_languages:
        errors.append(f"line 1: {languages} languages, {want_languages} expected")
    if strings != want_strings:
        errors.append(f"line 1: {strings} strings, {want_strings} expected")
    if len(rows) != 3 + strings:
        errors.append(f"{len(rows)} lines, {3 + strings} expected")
    for i, row in enumerate(rows[1:], start=2):
        if len(row) != languages:
            errors.append(f"line {i}: {len(row)} fields, {languages} expected")
    names, helps = rows[1], rows[2]
    if any(not n for n in names) or len(set(names)) != len(names):
        errors.append("line 2: language names must be non-empty and distinct")
    if any(not h.endswith('.html') for h in helps) or len(set(helps)) != len(helps):
        errors.append("line 3: help files must be distinct .html names")

    table = {n: rows[2 + n] for n in range(1, min(strings, len(rows) - 3) + 1)}
    for n, cells in table.items():
        if len(cells) != languages:
            continue
        en = cells[0]
        for lang, cell in zip(names[1:], cells[1:]):
            where = f"string {n}, {lang}"
            if en and not cell:
                errors.append(f"{where}: empty, English has {en!r}")
                continue
            if cell.count('&') != en.count('&'):
                errors.append(f"{where}: {cell.count('&')} '&', English has {en.count('&')}: {cell!r}")
            elif '&' in cell and not (mnemonic(cell) or '').isalpha():
                errors.append(f"{where}: '&' does not stand before a letter: {cell!r}")
            if edge_blanks(cell) != edge_blanks(en):
                errors.append(f"{where}: leading/trailing blanks {edge_blanks(cell)}, English {edge_blanks(en)}")
            if blank_runs(cell) != blank_runs(en):
                errors.append(f"{where}: runs of blanks {blank_runs(cell)}, English {blank_runs(en)}")

    for li, lang in enumerate(names):
        keys = {}
        for n in MENU_BAR_ROWS:
            if n in table and li < len(table[n]):
                key = mnemonic(table[n][li])
                if key and key in keys:
                    errors.append(f"{lang}: menu mnemonic '{key}' of string {n} repeats string {keys[key]}")
                keys.setdefault(key, n)
    return errors, (languages, strings, names)


def main():
    ap = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    root = pathlib.Path(__file__).resolve().parent.parent
    ap.add_argument('path', nargs='?', default=str(root / 'data' / 'loglang.txt'))
    ap.add_argument('--languages', type=int, default=8)
    ap.add_argument('--strings', type=int, default=200)
    args = ap.parse_args()
    errors, summary = check(args.path, args.languages, args.strings)
    for e in errors:
        print(e)
    if summary:
        languages, strings, names = summary
        print(f"{args.path}: {languages} languages ({', '.join(names)}), {strings} strings")
    print("FAILED" if errors else "OK", f"({len(errors)} problems)")
    return 1 if errors else 0


if __name__ == '__main__':
    sys.exit(main())

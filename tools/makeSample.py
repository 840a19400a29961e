#!/usr/bin/env python3
"""Writes the sample document config/sample.tavix.

Usage: makeSample.py TAVIX_CLI. The cells are listed below as a person would type them; the console
tool then calculates them, so that the document holds what the program itself writes. The result is
kept in the repository; run this after changing a cell.
"""
import pathlib
import struct
import subprocess
import sys
import tempfile

TARGET = pathlib.Path(__file__).resolve().parent.parent / "config" / "sample.tavix"
FONT = "DejaVu Sans"
MAIN_RECT = (0, 0, 1024, 256)
WIDTHS = [190, 150, 150, 110, 110, 110, 110, 110, 110, 110]

NAVY, GREY, WHITE, LINE = 0xFF1F3A5F, 0xFFE8EDF3, 0xFFFFFFFF, 0xFF8FA3B8


def style(mantissa=-1, radix=10, breakchar="", percent=False, trim=False, bold=False, italic=False,
          align=0, size=10, fore=0, background=0, bottom=0):
    """The format image of a cell."""
    group = ord(breakchar) if breakchar else 0
    rule = struct.pack("<hhBBBB", -1, mantissa, radix, group, 0x80 if trim else 0,
                       0x02 if percent else 0)
    name = FONT.encode()
    colors = (fore, background, 0, 0, LINE if bottom else 0, 0)
    flags = bold | italic << 1 | 1 << 4 | align << 6
    return (struct.pack("<i", len(rule)) + rule + struct.pack("<i", len(name)) + name +
            struct.pack("<6I", *colors) + struct.pack("<BBhBB", flags, 0, size, bottom << 4, 0))


TITLE = style(bold=True, size=18, fore=NAVY)
HEADING = style(bold=True, size=12, fore=WHITE, background=NAVY)
LABEL = style(fore=NAVY)
COLUMN = style(bold=True, align=2, background=GREY, bottom=1)
NOTE = style(italic=True, fore=0xFF606060)
NUMBER = style(align=2)
MONEY = style(mantissa=2, breakchar=",", align=2)
TOTAL = style(mantissa=2, breakchar=",", align=2, bold=True, background=GREY)
SHARE = style(mantissa=1, percent=True, align=2)

cells = {}


def put(row, col, text, image=b""):
    """Row and column count from 1."""
    cells[row - 1, col - 1] = text, image


def heading(row, text):
    for col in range(1, 11):
        put(row, col, f"'{text}'" if col == 1 else "", HEADING)


def line(row, label, text, image=b""):
    put(row, 1, f"'{label}'", LABEL)
    put(row, 2, text, image)


def big_numbers(row):
    heading(row, "Big integers and long fractions")
    line(row + 1, "2 ** 521 - 1", "2 ** 521 - 1")
    line(row + 2, "is it a prime?", f"B{row + 1}.value.isPrime")
    line(row + 3, "the same in base 16", f"B{row + 1}", style(radix=16))
    line(row + 4, "100! in groups of three", "pai(1, 100, [i] {i})", style(breakchar=","))
    line(row + 5, "pi to 200 digits", "pi(11)", style(mantissa=200))
    line(row + 6, "root of 2 to 60 digits", "sqrt(2.0..5)", style(mantissa=60))
    line(row + 7, "e ** (pi * i)", "exp(imag(0.0..3, pi(3)))", style(mantissa=20))


def factors(row):
    heading(row, "Factors")
    for col, text in enumerate(["number", "factors", "prime?"], 1):
        put(row + 1, col, f"'{text}'", COLUMN)
    numbers = ["2 ** 67 - 1", "2 ** 101 - 1", "10 ** 20 + 1", "1234567890123456789", "10 ** 30 + 57"]
    for at, number in enumerate(numbers, row + 2):
        put(at, 1, number, style())
        put(at, 2, f"A{at}.value.factors", style())
        put(at, 3, f"A{at}.value.isPrime", NUMBER)


def powers(row):
    heading(row, "Powers modulo a prime: change the modulus and the whole table follows")
    line(row + 1, "modulus", "1009", style(bold=True, background=0xFFFFF2CC))
    put(row + 2, 1, "'base \\\\ exponent'", COLUMN)
    for col, exponent in enumerate(["2", "3", "10", "100", "504", "1008", f"B{row + 1} - 1"], 2):
        put(row + 2, col, exponent, COLUMN)
    for at, base in enumerate(["2", "3", "5", "7", "11", "13"], row + 3):
        put(at, 1, base, COLUMN)
        for col in "BCDEFGH":
            put(at, ord(col) - 64, f"mod($A{at}, $B${row + 1}) ** {col}${row + 2}", NUMBER)


def ledger(row):
    heading(row, "A ledger")
    for col, text in enumerate(["date", "what for", "amount", "balance", "share"], 1):
        put(row + 1, col, f"'{text}'", COLUMN)
    entries = [("2026, 1, 5", "salary", "3250.00"), ("2026, 1, 6", "rent", "-1100.00"),
               ("2026, 1, 9", "groceries", "-184.35"), ("2026, 1, 14", "train", "-63.80"),
               ("2026, 1, 20", "books", "-47.90"), ("2026, 1, 28", "electricity", "-71.15")]
    first, last = row + 2, row + 1 + len(entries)
    for at, (date, what, amount) in enumerate(entries, first):
        put(at, 1, f"time({date})", style())
        put(at, 2, f"'{what}'", style())
        put(at, 3, amount, MONEY)
        put(at, 4, f"sum(C${first}:C{at})", MONEY)
        put(at, 5, f"C{at} / C${first}", SHARE)
    for at, (label, text) in enumerate([("total", "sum"), ("average", "avg"), ("largest", "max"),
                                        ("smallest", "min")], last + 1):
        put(at, 1, f"'{label}'", LABEL)
        put(at, 3, f"{text}(C{first}:C{last})", TOTAL)


def closures(row):
    heading(row, "Closures: a cell can hold a function")
    put(row + 1, 1, "'Fibonacci'", LABEL)
    put(row + 1, 2, "[n] { var a = 0; var b = 1; for (var i = 0; i < n; i += 1) "
        "{ var c = a + b; a = b; b = c }; a }", NOTE)
    for at, n in enumerate(["10", "100", "1000"], row + 2):
        put(at, 1, n, COLUMN)
        put(at, 2, f"(B${row + 1}.value)(A{at})", style())
    line(row + 5, "sum of the first 1000 squares", "sigma(1, 1000, [i] {i * i})")
    line(row + 6, "SHA-256 twice of a text", "hash256('Tavix')")


def u32_string(data):
    return struct.pack("<i", len(data)) + data


def table_image():
    rows, cols = zip(*cells)
    image = struct.pack("<7i", *MAIN_RECT, max(rows), max(cols), 4)
    for (row, col), (text, form) in sorted(cells.items()):
        record = (struct.pack("<2i", row, col) + u32_string(text.encode()) + u32_string(b"") +
                  u32_string(b"\0\0") + u32_string(b"") + u32_string(form))
        image += u32_string(record)
    return image


def main():
    put(1, 1, "'Tavix'", TITLE)
    put(1, 2, "'Numbers of any size. Every cell here can be changed.'", NOTE)
    big_numbers(3)
    factors(12)
    powers(20)
    ledger(30)
    closures(43)
    view = struct.pack("<i", len(WIDTHS)) + struct.pack(f"<{len(WIDTHS)}i", *WIDTHS)
    view += struct.pack("<i", 1) + struct.pack("<i", 36)  # the title's row
    with tempfile.TemporaryDirectory() as folder:
        raw = pathlib.Path(folder) / "raw.tavix"
        raw.write_bytes(u32_string(table_image()) + u32_string(view))
        subprocess.run([sys.argv[1], "set", raw, "A1='Tavix'", "-o", TARGET], check=True)


if __name__ == "__main__":
    main()

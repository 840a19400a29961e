#!/usr/bin/env python3
"""Draws the program's icon and splash image into the folders icons and packaging/icons.

Needs ImageMagick's convert. The results are kept in the repository; run this after changing a
drawing:  python3 tools/makeImages.py
"""
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent
ICONS = ROOT / "icons"
DESKTOP = ROOT / "packaging" / "icons"
FONT = "DejaVu-Sans"
BOLD = "DejaVu-Sans-Bold"
MONO = "DejaVu-Sans-Mono"


def convert(*arguments):
    subprocess.run(["convert", *map(str, arguments)], check=True)


def icon():
    """A sheet of cells, one of them picked out, with the T of the name over it."""
    cells = []
    for row in range(4):
        for col in range(4):
            x, y = 34 + col * 48, 34 + row * 48
            fill = "#ffffff30" if (row + col) % 2 else "#ffffff1c"
            cells += ["-fill", fill, "-draw", f"roundrectangle {x},{y} {x + 43},{y + 43} 6,6"]
    large = ICONS / "icon256.png"
    convert("-size", "256x256", "xc:none",
            "-fill", "#1f4e9c", "-draw", "roundrectangle 8,8 247,247 44,44",
            "-fill", "#2a66c4", "-draw", "roundrectangle 8,8 247,232 44,44",
            *cells,
            "-fill", "#ffd24a", "-draw", "roundrectangle 178,178 221,221 6,6",
            "-fill", "#ffffff", "-draw", "roundrectangle 58,58 198,86 8,8",
            "-draw", "roundrectangle 114,58 142,198 8,8",
            "-depth", "8", "-strip", large)
    convert(large, "-define", "icon:auto-resize=256,64,48,32,16", ICONS / "application.ico")
    for size in (16, 24, 32, 48, 64, 128, 256):
        convert(large, "-resize", f"{size}x{size}", "-strip", DESKTOP / f"{size}.png")
    large.unlink()


def splash():
    """A dark sheet whose digits fade into the ground; the lowest band is left to messages."""
    width, height = 680, 400
    ground = ["-size", f"{width}x{height}", "gradient:#16325f-#0a1730", "-depth", "8"]
    lines = ["-fill", "none", "-stroke", "#ffffff12", "-strokewidth", "1"]
    for x in range(40, width, 80):
        lines += ["-draw", f"line {x},0 {x},{height}"]
    for y in range(20, height, 40):
        lines += ["-draw", f"line 0,{y} {width},{y}"]
    digits = str(2 ** 1000)
    rows = ["-stroke", "none", "-font", MONO, "-pointsize", "19"]
    for i in range(6):
        alpha = 58 - 8 * i
        rows += ["-fill", f"#bcd4ff{alpha:02x}",
                 "-annotate", f"+44+{46 + 40 * i}", digits[52 * i:52 * i + 52]]
    title = ["-font", BOLD, "-pointsize", "76", "-fill", "#ffffff", "-annotate", "+58+196", "Tavix",
             "-font", FONT, "-pointsize", "17", "-fill", "#cfdcf5",
             "-annotate", "+63+234", "a sheet for numbers of any length",
             "-fill", "#ffd24a", "-draw", "roundrectangle 63,252 143,256 2,2"]
    band = ["-fill", "#00000059", "-draw", f"rectangle 0,{height - 44} {width},{height}"]
    convert(*ground, *lines, *rows, *title, *band, "-quality", "90", "-strip",
            ICONS / "main3.jpg")


if __name__ == "__main__":
    icon()
    splash()

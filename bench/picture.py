"""The rows as a picture: each ratio a dot, its spread a line, against the reference at 1."""

import math
from html import escape

import results

ROW = 18
LEFT = 270
WIDTH = 900
RIGHT = 120
FLOOR, CEILING = 0.25, 64.0
TICKS = (0.25, 0.5, 1, 2, 4, 8, 16, 32, 64)

STYLE = """
  text { font: 12px sans-serif; fill: #222 }
  .axis { stroke: #bbb; stroke-width: 1 }
  .one { stroke: #444; stroke-width: 1.5 }
  .spread { stroke: #2a6db0; stroke-width: 4; stroke-opacity: .45 }
  .dot { fill: #2a6db0 }
  .band { fill: #000; fill-opacity: .04 }
  .number { text-anchor: end; font-variant-numeric: tabular-nums }
  .tick { text-anchor: middle; fill: #666 }
"""


def across(ratio):
    share = math.log(min(max(ratio, FLOOR), CEILING) / FLOOR) / math.log(CEILING / FLOOR)
    return LEFT + share * (WIDTH - RIGHT - LEFT)


def line_of(row, index):
    y = 40 + index * ROW
    low, high = results.quartiles(results.ratios(row))
    middle = results.median_ratio(row)
    band = f'<rect class="band" x="0" y="{y - ROW / 2:.0f}" width="{WIDTH}" height="{ROW}"/>' if index % 2 else ""
    return (f'{band}<text x="10" y="{y + 4}">{escape(row["name"])}</text>'
            f'<line class="spread" x1="{across(low):.1f}" x2="{across(high):.1f}" y1="{y}" y2="{y}"/>'
            f'<circle class="dot" cx="{across(middle):.1f}" cy="{y}" r="4"/>'
            f'<text class="number" x="{WIDTH - 20}" y="{y + 4}">{middle:.2f}</text>')


def draw(run):
    height = 60 + len(run["rows"]) * ROW
    grid = "".join(
        f'<line class="{"one" if tick == 1 else "axis"}" x1="{across(tick):.1f}" x2="{across(tick):.1f}" y1="26" '
        f'y2="{height - 30}"/><text class="tick" x="{across(tick):.1f}" y="{height - 12}">{tick:g}</text>'
        for tick in TICKS)
    lines = "\n".join(line_of(row, index) for index, row in enumerate(run["rows"]))
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" width="{WIDTH}" '
            f'height="{height}">\n<style>{STYLE}</style>\n<rect width="{WIDTH}" height="{height}" fill="#fff"/>\n'
            f'<text x="10" y="18">What the library takes, as a multiple of its reference (1: the same); '
            f'the lines hold the middle half of the repetitions</text>\n{grid}\n{lines}\n</svg>\n')

"""Makes of what vorlink_bench measured a table, a picture and a file to compare with.

report.py run RAW.json FOLDER       gathers the program's file in FOLDER/results.json and FOLDER/results.svg; the table
report.py table RESULTS.json        the table of an earlier run
report.py compare EARLIER.json RESULTS.json
"""

import json
import pathlib
import statistics
import sys

import picture
import results


def amount(value, unit):
    if unit == "B":
        return f"{value:,.0f} B"
    if unit == "s":
        for name, factor in (("s", 1), ("ms", 1e3), ("µs", 1e6), ("ns", 1e9)):
            if value * factor >= 1 or name == "ns":
                return f"{value * factor:.3g} {name}" if value * factor < 1000 else f"{value * factor:.0f} {name}"
    return f"{value:.3g}"


def columns(rows):
    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]))]
    return "\n".join(
        "  ".join(text.ljust(width) if column == 0 else text.rjust(width)
                  for column, (text, width) in enumerate(zip(row, widths))).rstrip() for row in rows)


def table(run):
    rows = [("row", "reference", "library", "ratio", "middle half")]
    for row in run["rows"]:
        low, high = results.quartiles(results.ratios(row))
        rows.append((row["name"], amount(statistics.median(row["reference"]), row["unit"]),
                     amount(statistics.median(row["subject"]), row["unit"]), f"{results.median_ratio(row):.2f}",
                     f"{low:.2f} to {high:.2f}"))
    return columns(rows)


def comparison(earlier, now):
    before = {row["name"]: results.ratios(row) for row in earlier["rows"]}
    rows = [("row", "earlier", "now", "")]
    for row in now["rows"]:
        if row["name"] in before:
            old, new = before[row["name"]], results.ratios(row)
            rows.append((row["name"], f"{statistics.median(old):.2f}", f"{statistics.median(new):.2f}",
                         results.verdict(old, new)))
    return columns(rows)


def gather(raw, folder):
    run = results.read_run(raw)
    folder = pathlib.Path(folder)
    (folder / "results.json").write_text(json.dumps(run, indent=1) + "\n", encoding="utf-8")
    (folder / "results.svg").write_text(picture.draw(run), encoding="utf-8")
    return table(run)


def main(arguments):
    match arguments:
        case ["run", raw, folder]:
            print(gather(raw, folder))
        case ["table", path]:
            print(table(results.read(path)))
        case ["compare", earlier, now]:
            print(comparison(results.read(earlier), results.read(now)))
        case _:
            raise SystemExit(__doc__)


main(sys.argv[1:])

"""What a run of vorlink_bench found: rows of reference and subject, one value a repetition."""

import json
import math
import statistics

BYTES = ("size", "resident", "queued endpoint")


def ratios(row):
    return [subject / reference for reference, subject in zip(row["reference"], row["subject"])]


def median_ratio(row):
    return statistics.median(ratios(row))


def quartiles(values):
    if len(values) < 2:
        return values[0], values[0]
    low, _, high = statistics.quantiles(values, n=4, method="inclusive")
    return low, high


def growth(rows, few, many):
    """How much dearer each of many endpoints is than each of few; None where a size was not measured."""
    small, large = rows.get(f"lookup/{few}"), rows.get(f"lookup/{many}")
    if not small or not large:
        return None
    share = few / many

    def grown(side):
        return [share * after / before for before, after in zip(small[side], large[side])]

    return {"name": f"lookup growth {few} to {many}", "unit": "", "reference": grown("reference"),
            "subject": grown("subject")}


def read_run(path):
    """The program's own file, its repetitions gathered row by row."""
    with open(path, encoding="utf-8") as file:
        run = json.load(file)
    rows = {}

    def add(name, entry, suffix):
        unit = "B" if name in BYTES else "s"
        row = rows.setdefault(name, {"name": name, "unit": unit, "reference": [], "subject": []})
        row["reference"].append(entry["reference" + suffix])
        row["subject"].append(entry["subject" + suffix])

    for entry in run["benchmarks"]:
        if entry["run_type"] != "iteration":
            continue
        if entry.get("error_occurred"):
            raise SystemExit(f"{entry['name']}: {entry['error_message']}")
        name = entry["run_name"].split("/iterations:")[0].split("/repeats:")[0].split("/manual_time")[0]
        add(name, entry, "")
        if "subject_p99" in entry:
            add(name + ", 99th percentile", entry, "_p99")
    grown = growth(rows, 1000, 100000)
    if grown:
        rows[grown["name"]] = grown
    context = run["context"]
    return {"date": context["date"], "cores": context["num_cpus"], "rows": list(rows.values())}


def read(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def chance(before, after):
    """How likely two sets of ratios as different as these are when nothing has changed: the rank sum test."""
    everything = sorted(before + after)
    rank = {value: everything.index(value) + (everything.count(value) + 1) / 2 for value in everything}
    one, other = len(before), len(after)
    smaller = sum(rank[value] for value in before) - one * (one + 1) / 2
    ties = sum(everything.count(value) ** 3 - everything.count(value) for value in set(everything))
    total = one + other
    deviation = math.sqrt(one * other / 12 * (total + 1 - ties / (total * (total - 1)))) if total > 1 else 0
    if deviation == 0:
        return 1.0
    distance = max(0.0, abs(smaller - one * other / 2) - 0.5) / deviation
    return math.erfc(distance / math.sqrt(2))


def verdict(before, after):
    """What has become of a row, where it is no noise. Two runs of one program differ by a few percent."""
    change = statistics.median(after) / statistics.median(before) - 1
    if abs(change) < 0.03 or chance(before, after) > 0.01:
        return "same"
    return "dearer" if change > 0 else "cheaper"

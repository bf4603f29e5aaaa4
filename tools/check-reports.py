"""Compares the two forms of the report that a window test has saved in the folder FOLDER: the sums of
the JSON lines with the run's own, and the files of the text with those of the lines."""
import json
import re
import sys

folder = sys.argv[1]
with open(folder + "/report.json", encoding="utf-8") as file:
    *records, run = [json.loads(line) for line in file]
with open(folder + "/report.txt", encoding="utf-8-sig", newline="\r\n") as file:
    lines = file.read().split("\r\n")

faults = []


def expect(what, found, wanted):
    if found != wanted:
        faults.append(f"{what}: {found!r}, not {wanted!r}")


def of(result):
    return [record for record in records if record["result"] == result]


purged, failed = of("purged"), of("failed")
expect("records", len(records), run["files"])
expect("paths, each once", len({record["path"].lower() for record in records}), len(records))
expect("purged", len(purged), run["purged"])
expect("bytes", sum(record["bytes"] for record in purged), run["bytes"])
expect("failed", len(failed), run["failed"])
expect("passes", {record["passes"] for record in purged}, {run["passes"]})
expect("reasons", [record["path"] for record in records if "reason" in record],
       [record["path"] for record in failed])

size = re.compile(r"^(.+) \(([\d,]+) bytes\) purg(ed|ing: )")
named = [found.groups() for found in map(size.match, lines) if found]
expect("files of the text", [(path, int(count.replace(",", "")), end == "ed") for path, count, end in named],
       [(record["path"], record["bytes"], record in purged) for record in records])
end = lines.index(f"Files that could not be purged: {len(failed)}")
expect("failures of the text", lines[end + 1:end + 1 + len(failed)],
       [f"{record['path']}: {record['reason']}" for record in failed])
expect("number purged", f"Number of files purged: {run['purged']}" in lines, True)

print("\n".join(faults) or f"{len(records)} records, {len(purged)} purged, {len(failed)} failed: all agree")
sys.exit(bool(faults) or not purged or not failed)

"""Checks that the results of the benchmarks can be compared, and that changes of them are judged rightly."""

import copy
import json
import pathlib
import subprocess
import sys
import tempfile

wine_run, bench, tool = sys.argv[1:]
with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)

    def judge(before, after):
        for side, result in (("before", before), ("after", after)):
            (folder / side).write_text(json.dumps(result))
        done = subprocess.run([tool, folder / "before", folder / "after"], capture_output=True, text=True)
        verdicts = [line.split()[-1] for line in done.stdout.splitlines() if line.startswith("one tick of an idle Knob")]
        return done.returncode, verdicts

    written = folder / "written"
    subprocess.run([wine_run, bench, "--quick", "--rounds", "3", "--json", f"Z:{written}", "record"], check=True,
                   stdout=subprocess.DEVNULL)
    result = json.loads(written.read_text())
    assert result["quick"] and not result["busy"]
    row = next(row for row in result["rows"] if row["figure"] == "one tick of an idle Knob")
    low, high = row["middle half"]
    assert 0 < low <= row["ratio"] <= high and row["ratio up to"] == 3 and row["below"] is None and row["theirs"] > 0
    row.update({"ratio": 1.0, "middle half": [0.9, 1.1], "missed": False})

    def changed(**values):
        other = copy.deepcopy(result)
        next(each for each in other["rows"] if each["figure"] == row["figure"]).update(values)
        return other

    worse = changed(ratio=1.3, **{"middle half": [1.2, 1.4]})
    gone = {**result, "rows": [each for each in result["rows"] if each is not row]}
    for before, after, expected in (
        (result, result, (0, [])),
        (result, worse, (1, ["WORSE"])),
        (worse, result, (0, ["better"])),
        (result, changed(ratio=1.3, **{"middle half": [1.0, 1.4]}), (0, [])),  # as if by chance
        (result, changed(ratio=1.15, **{"middle half": [1.12, 1.2]}), (0, [])),  # hardly
        (result, changed(missed=True), (1, ["MISSED"])),
        (result, gone, (1, ["gone"])),
        (gone, result, (0, ["new"])),
    ):
        assert judge(before, after) == expected, (judge(before, after), expected)

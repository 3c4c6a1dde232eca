"""Run folders that a host could have written, or that nobody should have."""

import json


def write_run(folder, record, events=(), statistics=None, torn=""):
    """Writes the files of a run; `torn` is the begin of a line that a kill cut."""
    folder.mkdir(parents=True)
    whole = {"libvarrow_run": 1, "host": "orders", "begin": "2024-03-05T06:00:00.000000Z",
             "outcome": "done", "pipeline": "/plans/pipeline.json", "command_line": [], **record}
    (folder / "run.json").write_text(json.dumps(whole))
    lines = "".join(json.dumps(event) + "\n" for event in events)
    (folder / "steps.jsonl").write_text(lines + torn)
    if statistics is not None:
        (folder / "statistics.json").write_text(json.dumps(statistics))


def step(name, begin, wall, inner=(), after=None, end="end"):
    """Returns the events of a step that has other steps inside."""
    first = {"event": "begin", "step": name, "class": name.split("_")[-1], "at": begin,
             "place": "pipeline.json:3:5", "before": {"open": 3}}
    last = {"event": end, "step": name, "at": begin + wall, "wall": wall, "cpu": wall,
            "memory": 25_000_000, "after": after or {"open": 3}}
    return [first, *inner, last]


HOSTILE = "</script><script>document.title = 'broken out'</script><img src=x onerror=alert(1)> &lt;"

REJECTIONS = {"__rejections__": {"dropped": 7, "subjects": {
    "C017": {"placed": False, "examined": 92, "reasons": {
        "surgeon off duty": {"count": 61, "example": "OT1 2024-03-04 07:00"},
        "room too short": {"count": 31, "nearest": "OT2 2024-03-08 12:45",
                           "short_by": "00:30:00"}}},
    "C018": {"placed": True, "examined": 4, "reasons": {"room too short": {"count": 3}}},
    HOSTILE: {"placed": False, "examined": 1, "reasons": {HOSTILE: {"count": 1}}}}}}


def write_small(folder):
    """A run with each kind of entry, in part with hostile text. It breaks a rule."""
    events = [
        *step("0_ReadOrders", 0, 0.25, after={"open": 40}),
        *step("1_ChainedModule", 0.25, 2.75, [
            *step("1_ChainedModule/0_<script>", 0.25, 0.75),
            *step("1_ChainedModule/1_Plan", 1, 1.5, after={"open": 0, "late": {"C017": 2}}),
        ]),
        *step("2_" + HOSTILE, 3, 0.5, end="failed"),
    ]
    statistics = {"orders": [
        {"rows": 7},
        {"reader": [{"readerTime_Dur": {"minutes": 1.5, "timestamps": ["10:00:00", "10:01:30"]}}]},
        {"waits": {"[100-110)": "1,   20.00%", "[20-30)": "1,   20.00%", "[3-4)": "3,   60.00%",
                   "min": 3, "max": 104.5, "sum": 140, "count": 5, "sum/count": 28}},
        {"sizes": {"10": "count=1, proportion=25%", "9": "count=2, proportion=50%",
                   "-1": "count=1, proportion=25%", "__sum__": 4, "__key_count__": 3}},
        {"share": "3/4;75%"},
        {"progress": {"progressPercent": 50, "childdreProgress": [
            {"progressPercent": 100}, {"progressPercent": 50}]}},
        {"none": None},
        {"best": {"seed": 12345678901234567890, HOSTILE: [HOSTILE, {"a": 1}]}},
        {"improvements": [{"iteration": i, HOSTILE: late} for i, late in
                          [(0, 9), (4, 7), (30, 6), (2000, 2)]]},
        {"unplaced": REJECTIONS}]}
    record = {"outcome": "rules broken", "error": f"the plan breaks 1 rule: {HOSTILE}",
              "failed_step": "2_" + HOSTILE, "rules_broken": [f"late orders: 2, at most 1 {HOSTILE}"],
              "rules_kept": ["load of M1: 80 %, at most 90 %"], "wall": 3.5, "cpu": 3.25,
              "memory": 30_000_000, "end": "2024-03-05T06:00:03.500000Z",
              "command_line": ["run", "pipeline.json", "--set", HOSTILE],
              "warnings": [{"time": "2024-03-05T06:00:01.5Z", "level": "WARN",
                            "text": f"no \u0007 bell, \u202e no order {HOSTILE}"}],
              "warnings_dropped": 3, "seeds": [{"path": "modules[1].Plan.seed", "value": 2**63}],
              "machine": {"name": "planner", "processors": 2},
              "configuration": {"ChainedModule": {"modules": [{"Plan": {"text": HOSTILE}}]}},
              "inputs": [{"file": "/plans/orders.json", "sha256": "ab" * 32}]}
    write_run(folder, record, events, statistics)


def write_killed(folder):
    """A run whose process was killed in the second step."""
    begun = step("1_ChainedModule", 1, 0)[:1] + step("1_ChainedModule/0_Plan", 1, 0)[:1]
    record = {"outcome": "running", "dumps": "all", "folder": "/plans/a run",
              "folder_of_inputs": "/plans"}
    write_run(folder, record, step("0_ReadOrders", 0, 1) + begun,
              torn='{"event":"end","step":"1_Chai')
    for name in ["dump", "pipeline.json", "log/run.log"]:
        (folder / name).mkdir(parents=True)


def write_large(folder, steps, statistics):
    """A run with many steps in chains of 100, and many statistics in few containers."""
    events = []
    for chain in range(steps // 100):
        name = f"{chain}_ChainedModule"
        inner = [event for i in range(99) for event in
                 step(f"{name}/{i}_Plan", chain + i / 100, 0.01, after={"open": i})]
        events += step(name, chain, 1, inner)
    groups = [{f"group {i}": [{f"counter {j}": j} for j in range(statistics // 20)]}
              for i in range(20)]
    write_run(folder, {"outcome": "constructor", "wall": steps / 100}, events, {"orders": groups})

#!/usr/bin/env python3
"""Surveys 200 engagements on a Slurm of this machine, with the lines that the guide gives: one node dies with what runs
on it, a task fails and is submitted again, and the joined table is what a single run makes, byte for byte.

usage: slurm_test.py SORVANE_PROGRAM SCRIPTS DOCUMENT

Ends with 77 and a line that says why where there can be no Slurm.
"""

import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile

from localcluster import DoesNotStart, LocalCluster, reason_against, until

SORVANE, SCRIPTS, DOCUMENT = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
FILES, TASKS = 200, 8
ENDING = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGALRM)
# What runs on the first node waits until that dies, even tasks before they begin and odd ones after they are done; the
# fifth fails the first time that it has a chance to.
STAND_IN = """#!/usr/bin/env bash
task=${SLURM_ARRAY_TASK_ID:-0}
stand() { touch "$HELD/$task"; for _ in {1..600}; do [ -e "$HELD/hold" ] || return 0; sleep 0.1; done; }
[ "$1" = runs ] && [ "${SLURMD_NODENAME:-}" = n1 ] && [ -e "$HELD/hold" ] && holds=1 || holds=0
[ $((holds && task % 2 == 0)) = 0 ] || stand
[ "$1 $task" != "runs 5" ] || [ $holds = 1 ] || ! rm "$HELD/fail" 2>/dev/null || exit 3
status=0
"$SORVANE" "$@" || status=$?
[ $((holds && task % 2)) = 0 ] || stand
exit $status
"""


def pass_of(number):
    """A threat that passes a target, each at another distance; of every 40th the last line is cut."""
    lines = ["/nowhere/t.top", "/nowhere/t.rad", "/nowhere/tgt_b0001.rad", "1 2 3", "4 5 6", "/nowhere/tgt.vnl",
             "/nowhere/tgt.brdf", "unused", "white", "7", "somebody", "1.5"]
    for time in range(5):
        lines += [f"{time} 0 0 {number / 8} -1000 0 0 0", f"{100 * (time - 2)} 0 -1000 0 0 0", "0 0 0 0 0"]
    text = "\n".join(lines) + "\n"
    return text if number % 40 else text[:-8]


def expect(is_so, *what):
    if not is_so:
        raise AssertionError(" ".join(map(str, what)))


def shell(line):
    return subprocess.run(["bash", "-euc", line], check=True, capture_output=True, text=True).stdout.strip()


def documented(heading, data):
    """The lines of the document's examples below a heading, for this set and place."""
    text = DOCUMENT.read_text().partition(f"\n## {heading}\n")[2].partition("\n## ")[0]
    blocks = re.findall(r"```sh\n(.*?)```", text, re.DOTALL)
    expect(blocks, "no examples below", heading)
    for said, meant in (("/usr/share/sorvane/slurm", str(SCRIPTS)), ("/data/night", str(data)),
                        ("1-100", f"1-{TASKS}"), (" 100 ", f" {TASKS} "), (" 100)", f" {TASKS})")):
        blocks = [block.replace(said, meant) for block in blocks]
    return blocks


def survey(cluster, data, held):
    begin, again, merge_again, render = documented("On a cluster", data)
    (held / "hold").touch()
    (held / "fail").touch()
    shell(begin)
    on_first = lambda: cluster.ask("squeue", "-r", "-h", "-t", "R", "-w", "n1", "-o", "%K").split()
    until("tasks on both nodes", lambda: len(list(held.glob("[0-9]"))) == len(on_first()) >= 2
          and len(list(pathlib.Path("parts").glob("part-*"))) >= 2)
    died = set(on_first())
    expect(0 < len(died) < TASKS and {int(task) % 2 for task in died} == {0, 1}, "on the first node:", died)
    cluster.kill_node("n1")
    (held / "hold").unlink()
    until("the end of the survey", cluster.is_idle)
    restarts = cluster.restarts()
    expect({task for task, count in restarts.items() if count} >= died, "restarted:", restarts, "on the node:", died)
    parts = sorted(path.name for path in pathlib.Path("parts").glob("part-*"))
    expect(parts == [f"part-{i + 1}.sqlite" for i in range(TASKS) if i != 4], "parts:", parts)
    expect(not pathlib.Path("night.sqlite").exists(), "what lacks a part was joined")

    shell(f"{begin.splitlines()[0]}\n{again}\n{merge_again}")
    until("the joined table", cluster.is_idle)
    options = re.search(rf" {TASKS} (.*)\)$", begin, re.MULTILINE).group(1)
    shell(f"'{SORVANE}' runs {data} -o one.csv {options} || [ $? = 1 ]; '{SORVANE}' runs --merge night.sqlite -o all.csv")
    one = pathlib.Path("one.csv").read_bytes()
    expect(one.count(b"\n") == FILES + 1, one.count(b"\n"), "lines")
    expect(one == pathlib.Path("all.csv").read_bytes(), "the joined table is another than that of a single run")
    return render


def render_some(cluster, data, line):
    some = data.parent / "some"
    (some / "below").mkdir(parents=True)
    for i, name in enumerate(("ETXYZ.OUT.a", "below/ETXYZ.OUT.a", "below/ETXYZ.OUT.b")):
        (some / name).write_text(pass_of(i + 1))
    shell(line.replace(str(data), str(some)).rstrip() + " --size 64x48 --allow-missing")
    until("pictures", cluster.is_idle)
    pictures = sorted(str(path) for path in pathlib.Path("pictures").rglob("*.*") if path.is_file())
    expect(pictures == ["pictures/ETXYZ.OUT.a.png", "pictures/below/ETXYZ.OUT.a.png", "pictures/below/ETXYZ.OUT.b.png"], pictures)


def end(received, _):
    for number in ENDING:
        signal.signal(number, signal.SIG_IGN)  # what is begun is cleaned up whole
    sys.exit(128 + received)


def main():
    reason = reason_against()
    if reason:
        print("There is no Slurm to test with:", reason)
        sys.exit(77)
    for number in ENDING:
        signal.signal(number, end)
    signal.alarm(270)
    with tempfile.TemporaryDirectory(prefix="slurm-") as name:
        folder = pathlib.Path(name)
        data, held, work = folder / "night", folder / "held", folder / "work"
        for each in (data, held, work, folder / "bin", folder / "slurm"):
            each.mkdir()
        for number in range(FILES):
            (data / f"case{number:03}.ETXYZ.OUT.x").write_text(pass_of(number))
        (folder / "bin/sorvane").write_text(STAND_IN)
        (folder / "bin/sorvane").chmod(0o755)
        os.environ.update(HELD=str(held), SORVANE=str(SORVANE), PATH=f"{folder}/bin:{os.environ['PATH']}")
        os.environ.pop("DISPLAY", None)
        os.chdir(work)
        try:
            with LocalCluster(folder / "slurm") as cluster:
                try:
                    render_some(cluster, data, survey(cluster, data, held))
                except Exception:
                    print(*cluster.logs(), *(file.read_text() for file in sorted(work.glob("slurm-*.out"))), sep="\n")
                    raise
        except DoesNotStart as problem:
            print("Slurm does not start here:", problem)
            sys.exit(77)
        os.chdir("/")


main()

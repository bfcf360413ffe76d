#!/usr/bin/env python3
"""Opens a report in a browser without a window and uses it: nothing may complain, the table sorts and filters, the page
loads nothing from elsewhere and prints. Without Chromium there is nothing to do.

usage: check_report.py SORVANE_PROGRAM
"""

import base64
import json
import os
import pathlib
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time

RUNS = 10000
SKIPPED = 77


class Browser:
    """Chromium over its debugging pipe: messages in JSON, each ended by a zero byte."""

    def __init__(self, program, folder):
        to_browser, commands = os.pipe()
        answers, from_browser = os.pipe()

        def give_pipes():
            # They may stand in each other's way.
            reader, writer = os.dup(to_browser), os.dup(from_browser)
            os.dup2(reader, 3)
            os.dup2(writer, 4)

        self.process = subprocess.Popen(
            [program, "--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--remote-debugging-pipe",
             f"--user-data-dir={folder}/profile", "about:blank"],
            close_fds=False, preexec_fn=give_pipes, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        self.commands, self.answers = os.fdopen(commands, "wb"), os.fdopen(answers, "rb")
        self.number, self.rest, self.complaints, self.requests = 0, b"", [], []
        target = self.ask("Target.createTarget", session=None, url="about:blank")["targetId"]
        self.session = self.ask("Target.attachToTarget", session=None, targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.ask(domain + ".enable")

    session = None

    def message(self):
        while b"\0" not in self.rest:
            piece = os.read(self.answers.fileno(), 1 << 20)
            if not piece:
                sys.exit("the browser has ended")
            self.rest += piece
        text, _, self.rest = self.rest.partition(b"\0")
        return json.loads(text)

    def note(self, message):
        method, parameters = message.get("method"), message.get("params", {})
        if method == "Runtime.exceptionThrown" or (
                method == "Log.entryAdded" and parameters["entry"]["level"] in ("warning", "error")) or (
                method == "Runtime.consoleAPICalled" and parameters["type"] in ("warning", "error", "assert")):
            self.complaints.append(parameters)
        if method == "Network.requestWillBeSent" and not parameters["request"]["url"].startswith("data:"):
            self.requests.append(parameters["request"]["url"])

    def ask(self, method, session="", **parameters):
        self.number += 1
        message = {"id": self.number, "method": method, "params": parameters}
        if session is not None:
            message["sessionId"] = self.session
        self.commands.write(json.dumps(message).encode() + b"\0")
        self.commands.flush()
        while True:
            answer = self.message()
            if answer.get("id") == self.number:
                if "error" in answer:
                    sys.exit(f"{method}: {answer['error']}")
                return answer["result"]
            self.note(answer)

    def value(self, expression):
        answer = self.ask("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in answer:
            sys.exit(f"{expression}: {answer['exceptionDetails']}")
        return answer["result"].get("value")

    def open(self, address):
        self.complaints, self.requests = [], []
        self.ask("Page.navigate", url=address)
        while self.value("document.readyState") != "complete":
            time.sleep(0.05)

    def end(self):
        self.process.terminate()
        self.process.wait(20)


def make_set(path):
    database = sqlite3.connect(path)
    database.execute("CREATE TABLE runs (path TEXT PRIMARY KEY, file_bytes INTEGER, file_modified_ns INTEGER, faults, "
                     "closest_approach_m, closest_approach_aspect_deg, decoyed, pattern) WITHOUT ROWID")
    rows = [(f"run{i:05}", 1, 1, 0, (i * 7919 % RUNS) / 100, i % 181, i % 2, f"p<{i % 3}>") for i in range(RUNS)]
    rows[5] = rows[5][:4] + (None,) + rows[5][5:]
    database.executemany("INSERT INTO runs VALUES (?, ?, ?, ?, ?, ?, ?, ?)", rows)
    database.commit()
    database.close()
    return rows


def same(told, expected):
    assert told == expected, f"{told!r} is not {expected!r}"


CELLS = "[...document.querySelectorAll('table.runs tbody tr')].map((row) => row.cells[%d].textContent)"
COLUMN = "[...document.querySelectorAll('table.runs th button')].find((button) => button.textContent === '%s')"


def use_table(browser, rows):
    """Column 0 is the path, 1 the group, 2 the miss distance."""
    misses = sorted(row[4] for row in rows if row[4] is not None)

    def shown(column):
        return browser.value(CELLS % column)

    def press(name):
        browser.value((COLUMN % name) + ".click()")
        return browser.value((COLUMN % name) + ".parentElement.ariaSort")

    def filter_by(text):
        browser.value(f"""new Promise((done) => {{
            const box = document.getElementById('filter');
            box.value = {json.dumps(text)};
            box.dispatchEvent(new Event('input'));
            setTimeout(done, 400);
        }})""")
        return browser.value("document.getElementById('count').textContent")

    same([float(x) for x in shown(2)], misses[:50])  # the worst first
    same(press("closest_approach_m"), "descending")
    same([float(x) for x in shown(2)], misses[:-51:-1])
    same(press("path"), "ascending")
    same(shown(0), [f"run{i:05}" for i in range(50)])
    browser.value("document.getElementById('next').click()")
    same(shown(0)[0], "run00050")
    same(filter_by("closest_approach_m<0.1 decoyed=1"), f"1 to 5 of {5} runs")
    same(filter_by("closest_approach_m="), "1 to 1 of 1 runs")
    same(shown(0), ["run00005"])
    same(filter_by("P<1> run0000"), "1 to 3 of 3 runs")
    same(filter_by("nowhere"), "no run")
    same(filter_by(""), f"1 to 50 of {RUNS} runs")
    took = browser.value(f"(() => {{ const from = performance.now(); {COLUMN % 'pattern'}.click(); "
                         f"return performance.now() - from; }})()")
    print(f"sorting {RUNS} runs by a text: {took:.0f} ms")
    assert took < 500, took
    same(set(shown(1)), {"p<0>"})
    # A bar of the histogram chooses its runs.
    chosen = browser.value("""(() => {
        const bar = document.querySelector('[data-filter]');
        bar.dispatchEvent(new MouseEvent('click'));
        return bar.dataset.filter;
    })()""")
    end = float(chosen.split("<")[-1])
    same(browser.value("document.getElementById('count').textContent"),
         f"1 to 50 of {sum(miss < end for miss in misses)} runs")


def main():
    sorvane = pathlib.Path(sys.argv[1]).resolve()
    program = shutil.which("chromium")
    if program is None:
        print("skipped: there is no chromium")
        return SKIPPED
    with tempfile.TemporaryDirectory() as folder:
        def report(*arguments):
            subprocess.run([sorvane, "report", *arguments, "--allow-missing"], cwd=folder, check=True, capture_output=True)

        rows = make_set(pathlib.Path(folder, "night.sqlite"))
        report("night.sqlite", "-o", "night.html", "--count", "0", "--by", "pattern")
        subprocess.run([sorvane, "demo", "demonstration"], cwd=folder, check=True, capture_output=True)
        subprocess.run([sorvane, "runs", "demonstration", "-o", "four.sqlite"], cwd=folder, capture_output=True, check=False)
        report("four.sqlite", "-o", "four.html", "--with-faults")
        browser = Browser(program, folder)
        try:
            for name in ("night", "four"):
                address = f"file://{folder}/{name}.html"
                browser.open(address)
                same(browser.value("document.querySelectorAll('section').length") >= 5, True)
                if name == "night":
                    use_table(browser, rows)
                else:
                    pictures = browser.value("[...document.images].map((image) => image.complete && image.naturalWidth)")
                    same(pictures, [720] * 8)
                paper = base64.b64decode(browser.ask("Page.printToPDF", printBackground=True)["data"])
                assert paper.startswith(b"%PDF-") and len(paper) > 20000, len(paper)
                same(browser.complaints, [])
                same(browser.requests, [address])
            browser.open(f"file://{folder}/night.html#sort=path&order=descending&filter=decoyed=0")
            same(browser.value(CELLS % 0)[0], f"run{RUNS - 2:05}")
        finally:
            browser.end()
    return 0


sys.exit(main())

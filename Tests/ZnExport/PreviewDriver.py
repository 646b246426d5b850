#!/usr/bin/python3
"""Drives a page in headless Chromium over the DevTools protocol and reports what happened.

Usage: PreviewDriver.py CHROMIUM PAGE_URL STEPS.json RESULT.json

The browser is started with --remote-debugging-pipe (the protocol over file descriptors 3 and 4,
one JSON message per NUL-terminated chunk), so nothing listens on a port. STEPS.json is a list of
steps run in order once the page has loaded and window.znPreview is ready:
  {"eval": "expression"}            the expression's value (promises are awaited)
  {"shot": "#css-selector"}         a PNG screenshot of that element's box: its SHA-256 and size
  {"shot": "#sel", "save": "a.png"} ... also saved to a file
RESULT.json gets {"results": [...], "console": [...], "exceptions": [...], "requests": [...]}:
console messages of level error or warning, uncaught exceptions and every URL the page asked
for. Exit status 0 when the steps ran, 1 with a message on standard error otherwise.
"""
import base64
import hashlib
import json
import os
import select
import shutil
import subprocess
import sys
import tempfile
import time

# A safety net against a browser that hangs; never a measure of speed.
DEADLINE_SECONDS = 120


class Browser:
    def __init__(self, chromium):
        self.profile = tempfile.mkdtemp(prefix="zn_preview_profile_")
        to_browser_read, self.to_browser = os.pipe()
        self.from_browser, from_browser_write = os.pipe()

        def wire_descriptors():
            # Copies above every open descriptor first, so neither dup2 overwrites the other's source.
            read_copy = os.dup(to_browser_read)
            write_copy = os.dup(from_browser_write)
            os.dup2(read_copy, 3)
            os.dup2(write_copy, 4)

        self.process = subprocess.Popen(
            [chromium, "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars", "--mute-audio",
             "--remote-debugging-pipe", "--user-data-dir=" + self.profile, "--no-first-run",
             "--no-default-browser-check", "--disable-background-networking", "--disable-component-update",
             "--disable-sync", "--disable-extensions", "--force-device-scale-factor=1", "about:blank"],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            pass_fds=(3, 4), preexec_fn=wire_descriptors)
        os.close(to_browser_read)
        os.close(from_browser_write)
        self.buffer = b""
        self.next_id = 0
        self.events = []
        self.deadline = time.monotonic() + DEADLINE_SECONDS

    def close(self):
        try:
            self.send("Browser.close")
        except Exception:
            pass
        try:
            self.process.wait(timeout=10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        shutil.rmtree(self.profile, ignore_errors=True)

    def read_message(self):
        while b"\0" not in self.buffer:
            remaining = self.deadline - time.monotonic()
            if remaining <= 0:
                raise RuntimeError("the browser did not answer in time")
            ready, _, _ = select.select([self.from_browser], [], [], remaining)
            if ready:
                chunk = os.read(self.from_browser, 1 << 20)
                if not chunk:
                    raise RuntimeError("the browser closed its protocol pipe")
                self.buffer += chunk
        message, self.buffer = self.buffer.split(b"\0", 1)
        return json.loads(message)

    def send(self, method, params=None, session=None):
        self.next_id += 1
        request = {"id": self.next_id, "method": method, "params": params or {}}
        if session:
            request["sessionId"] = session
        os.write(self.to_browser, json.dumps(request).encode() + b"\0")
        while True:
            message = self.read_message()
            if message.get("id") == self.next_id:
                if "error" in message:
                    raise RuntimeError(method + ": " + json.dumps(message["error"]))
                return message.get("result", {})
            self.events.append(message)

    def wait_for_event(self, method):
        for index, event in enumerate(self.events):
            if event.get("method") == method:
                del self.events[index]
                return event
        while True:
            message = self.read_message()
            if message.get("method") == method:
                return message
            self.events.append(message)


def evaluate(browser, session, expression):
    result = browser.send("Runtime.evaluate", {"expression": expression, "returnByValue": True,
                                               "awaitPromise": True}, session)
    if "exceptionDetails" in result:
        raise RuntimeError("evaluating " + expression + ": " + json.dumps(result["exceptionDetails"]))
    return result.get("result", {}).get("value")


def main():
    chromium, page_url, steps_path, result_path = sys.argv[1:5]
    with open(steps_path) as steps_file:
        steps = json.load(steps_file)
    browser = Browser(chromium)
    try:
        target = browser.send("Target.createTarget", {"url": "about:blank"})["targetId"]
        session = browser.send("Target.attachToTarget", {"targetId": target, "flatten": True})["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            browser.send(domain + ".enable", {}, session)
        browser.send("Emulation.setDeviceMetricsOverride",
                     {"width": 1280, "height": 1000, "deviceScaleFactor": 1, "mobile": False}, session)
        browser.send("Page.navigate", {"url": page_url}, session)
        browser.wait_for_event("Page.loadEventFired")
        ready = evaluate(browser, session, "new Promise(function (done) { (function poll() {"
                         " if (window.znPreview && window.znPreview.ready) { done(true); }"
                         " else { setTimeout(poll, 20); } })(); })")
        if not ready:
            raise RuntimeError("the page never became ready")

        results = []
        for step in steps:
            if "eval" in step:
                results.append(evaluate(browser, session, step["eval"]))
            elif "shot" in step:
                # Let the page paint what the previous steps drew.
                evaluate(browser, session, "new Promise(function (done) { requestAnimationFrame(function () {"
                         " requestAnimationFrame(function () { done(true); }); }); })")
                box = evaluate(browser, session, "(function () { const r = document.querySelector(" +
                               json.dumps(step["shot"]) + ").getBoundingClientRect();"
                               " return [r.x, r.y, r.width, r.height]; })()")
                shot = browser.send("Page.captureScreenshot", {"format": "png", "clip": {
                    "x": box[0], "y": box[1], "width": box[2], "height": box[3], "scale": 1}}, session)
                png = base64.b64decode(shot["data"])
                if "save" in step:
                    with open(step["save"], "wb") as out:
                        out.write(png)
                results.append({"sha256": hashlib.sha256(png).hexdigest(), "bytes": len(png), "box": box})
            else:
                raise RuntimeError("unknown step " + json.dumps(step))

        report = {"results": results, "console": [], "exceptions": [], "requests": []}
        for event in browser.events:
            method = event.get("method")
            params = event.get("params", {})
            if method == "Runtime.consoleAPICalled" and params.get("type") in ("error", "warning", "assert"):
                report["console"].append(" ".join(str(arg.get("value", arg.get("description", "")))
                                                  for arg in params.get("args", [])))
            elif method == "Log.entryAdded" and params.get("entry", {}).get("level") in ("error", "warning"):
                report["console"].append(params["entry"].get("text", ""))
            elif method == "Runtime.exceptionThrown":
                report["exceptions"].append(json.dumps(params.get("exceptionDetails", {})))
            elif method == "Network.requestWillBeSent":
                report["requests"].append(params.get("request", {}).get("url", ""))
        with open(result_path, "w") as out:
            json.dump(report, out)
    finally:
        browser.close()
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except Exception as error:  # Reported to the test, which fails with the message.
        print("PreviewDriver: " + str(error), file=sys.stderr)
        sys.exit(1)

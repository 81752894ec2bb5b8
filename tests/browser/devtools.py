"""A headless Chromium that is talked to through a pipe, in the protocol of its developer tools."""
import json
import os
import select
import shutil
import signal
import subprocess
import time


def chromium():
    return next((found for name in ("chromium", "chromium-browser") if (found := shutil.which(name))), None)


PATIENCE = 400  # seconds: a machine may be busy
OPTIONS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
           "--host-resolver-rules=MAP * ~NOTFOUND"]


class Page:
    """One page. What it asks for and complains of is kept in `complaints`."""

    def __init__(self, profile, width=1200, height=900):
        to_browser, self._write = os.pipe()
        self._read, from_browser = os.pipe()
        # Standard names of the pipe are 3 and 4.
        pipes = f"exec 3<&{to_browser} 4>&{from_browser}"
        command = [chromium(), *OPTIONS, "--remote-debugging-pipe", f"--user-data-dir={profile}", "about:blank"]
        self._process = subprocess.Popen(["bash", "-c", pipes + '; exec "$@"', "bash", *command],
                                         pass_fds=(to_browser, from_browser), stdout=subprocess.DEVNULL,
                                         stderr=subprocess.DEVNULL, start_new_session=True)
        os.close(to_browser)
        os.close(from_browser)
        self._rest, self._events, self._last, self._session = b"", [], 0, None
        self._traced = []
        self.complaints = []
        target = next(one for one in self.call("Target.getTargets")["targetInfos"] if one["type"] == "page")
        self._session = self.call("Target.attachToTarget", targetId=target["targetId"], flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network", "DOM"):
            self.call(domain + ".enable")
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.close(self._write)
        try:
            self._process.wait(10)
        except subprocess.TimeoutExpired:
            os.killpg(self._process.pid, signal.SIGKILL)
            self._process.wait()
        os.close(self._read)

    def call(self, method, **parameters):
        self._last += 1
        message = {"id": self._last, "method": method, "params": parameters}
        if self._session:
            message["sessionId"] = self._session
        rest = json.dumps(message).encode() + b"\0"
        while rest:
            rest = rest[os.write(self._write, rest):]
        while True:
            answer = self._receive(time.monotonic() + PATIENCE)
            if answer.get("id") == self._last:
                if "error" in answer:
                    raise RuntimeError(f"{method}: {answer['error']['message']}")
                return answer["result"]

    def _receive(self, until):
        while b"\0" not in self._rest:
            if not select.select([self._read], [], [], max(0, until - time.monotonic()))[0]:
                raise TimeoutError("the browser doesn't answer")
            more = os.read(self._read, 1 << 20)
            if not more:
                raise RuntimeError("the browser is gone")
            self._rest += more
        message, self._rest = self._rest.split(b"\0", 1)
        message = json.loads(message)
        if "method" in message:
            self._take(message["method"], message.get("params", {}))
        return message

    def _take(self, method, parameters):
        self._events.append(method)
        if method == "Tracing.dataCollected":
            self._traced += parameters["value"]
        if method == "Runtime.exceptionThrown":
            self.complaints.append("an exception: " + parameters["exceptionDetails"]["text"])
        if method == "Log.entryAdded" and parameters["entry"]["level"] in ("error", "warning"):
            self.complaints.append(parameters["entry"]["text"])
        if method == "Network.requestWillBeSent" and not parameters["request"]["url"].startswith(("file:", "data:")):
            self.complaints.append("it asks for " + parameters["request"]["url"])

    def open(self, path):
        self._events.clear()
        self.call("Page.navigate", url=path.as_uri())
        self.wait_for("Page.loadEventFired")

    def wait_for(self, event):
        until = time.monotonic() + PATIENCE
        while event not in self._events:
            self._receive(until)

    def start_tracing(self):
        self._traced.clear()
        self.call("Tracing.start", traceConfig={"includedCategories": ["toplevel", "devtools.timeline"]})

    def longest_task(self):
        """Since tracing was started, of the page's own thread: milliseconds in which it was busy, whoever else was, and
        what took most of them."""
        self._events.clear()
        self.call("Tracing.end")
        self.wait_for("Tracing.tracingComplete")
        threads = {(one["pid"], one["tid"]) for one in self._traced
                   if one["name"] == "thread_name" and one["args"]["name"] == "CrRendererMain"}
        spent = [(one.get("tdur", 0) / 1000, one) for one in self._traced if (one["pid"], one["tid"]) in threads]
        longest, task = max(((ms, one) for ms, one in spent if one["name"].endswith("RunTask")), default=(0, None),
                            key=lambda pair: pair[0])
        if not task:
            return 0, "nothing"
        within = [(ms, one["name"]) for ms, one in spent if one is not task and task["ts"] <= one["ts"] <
                  task["ts"] + task["dur"] and not one["name"].endswith("RunTask")]
        return longest, max(within, default=(0, "nothing"))[1]

    def evaluate(self, expression):
        found = self.call("Runtime.evaluate", expression=expression, returnByValue=True, awaitPromise=True)
        if "exceptionDetails" in found:
            raise RuntimeError(expression + ": " + json.dumps(found["exceptionDetails"])[:500])
        return found["result"].get("value")

    def press(self, key, text=None):
        codes = {"Tab": 9, "Enter": 13, " ": 32, "Escape": 27}
        what = {"key": key, "windowsVirtualKeyCode": codes.get(key, 0)}
        self.call("Input.dispatchKeyEvent", type="keyDown", **what, **({"text": text} if text else {}))
        self.call("Input.dispatchKeyEvent", type="keyUp", **what)

"""A headless Chromium, driven through chromedriver, without access to any network."""

import base64
import json
import re
import shutil
import subprocess
import tempfile
import urllib.request


class Browser:
    """A session of Chromium with a fresh profile."""

    def __enter__(self):
        self.profile = tempfile.mkdtemp()
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE, text=True)
        for line in self.driver.stdout:
            started = re.search(r"started successfully on port (\d+)", line)
            if started:
                break
        else:
            raise RuntimeError("chromedriver does not start")
        self.address = f"http://127.0.0.1:{started[1]}"
        self.session = ""
        arguments = ["headless", "no-sandbox", "disable-gpu", "disable-quic", "no-first-run",
                     "disable-background-networking", "disable-component-update", "disable-sync",
                     "user-data-dir=" + self.profile]
        options = {"binary": "/usr/bin/chromium", "args": arguments}
        wanted = {"goog:chromeOptions": options,
                  "goog:loggingPrefs": {"browser": "ALL", "performance": "ALL"}}
        created = self._post("/session", {"capabilities": {"alwaysMatch": wanted}})
        self.session = "/session/" + created["sessionId"]
        self._post(self.session + "/url", {"url": "about:blank"})  # ends the start page
        return self

    def __exit__(self, *_):
        try:
            self._call("DELETE", self.session)
        finally:
            self.driver.terminate()
            self.driver.wait()
            shutil.rmtree(self.profile, ignore_errors=True)

    def _call(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.address + path, data, method=method,
                                         headers={"Content-Type": "application/json"})
        with urllib.request.urlopen(request) as answer:
            return json.load(answer)["value"]

    def _post(self, path, body):
        return self._call("POST", path, body)

    def protocol(self, command, **parameters):
        """Calls a function of the DevTools protocol."""
        return self._post(self.session + "/goog/cdp/execute",
                          {"cmd": command, "params": parameters})

    def open(self, file, width=1400, scheme="light"):
        """Opens a file and returns the processor seconds that the pages took until now."""
        self.logs("browser"), self.logs("performance")
        self.protocol("Performance.enable")
        self.protocol("Emulation.setDeviceMetricsOverride", width=width, height=900,
                      deviceScaleFactor=1, mobile=width < 600)
        self.protocol("Emulation.setEmulatedMedia",
                      features=[{"name": "prefers-color-scheme", "value": scheme}])
        self._post(self.session + "/url", {"url": file.as_uri()})
        self.run("return document.body.offsetHeight")
        return self.processor_seconds()

    def processor_seconds(self):
        """Returns the time of the thread that shows pages, which waits for no other process."""
        metrics = self.protocol("Performance.getMetrics")["metrics"]
        return next(metric["value"] for metric in metrics if metric["name"] == "ThreadTime")

    def run(self, script, *arguments):
        """Returns the result of a script, the body of a function."""
        return self._post(self.session + "/execute/sync",
                          {"script": script, "args": list(arguments)})

    def press_tab(self):
        key = {"type": "keyDown", "value": "\ue004"}
        self._post(self.session + "/actions",
                   {"actions": [{"type": "key", "id": "keys",
                                 "actions": [key, {**key, "type": "keyUp"}]}]})

    def logs(self, kind):
        return self._post(self.session + "/se/log", {"type": kind})

    def requests(self):
        """Returns the addresses that were requested since the page was opened."""
        events = [json.loads(entry["message"])["message"] for entry in self.logs("performance")]
        return [event["params"]["request"]["url"] for event in events
                if event["method"] == "Network.requestWillBeSent" and
                not event["params"]["documentURL"].startswith("chrome:")]  # the start page

    def screenshot(self, path, whole=True):
        image = self.protocol("Page.captureScreenshot", captureBeyondViewport=whole)
        path.write_bytes(base64.b64decode(image["data"]))

    def print(self, path):
        path.write_bytes(base64.b64decode(self.protocol("Page.printToPDF")["data"]))

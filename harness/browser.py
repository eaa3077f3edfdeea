"""Chromium with a chat page that reports to the test what it received."""

import http.server
import io
import json
import os
import threading
import time
from dataclasses import dataclass

from PIL import Image

from .waiting import PATIENCE, wait_until

_CHAT_PAGE = os.path.join(os.path.dirname(__file__), "chat_page.html")
EDITOR_PAGE = os.path.join(os.path.dirname(__file__), "editor_page.html")


@dataclass(frozen=True)
class Report:
    """One thing that the page told, with the monotonic time of its arrival."""

    kind: str
    body: bytes
    seconds: float


class ChatPage:
    """The page's web server, on a free port of this machine only."""

    def __init__(self, page=_CHAT_PAGE):
        self.reports = []
        self._page = page
        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), self._handler())
        threading.Thread(target=self._server.serve_forever, daemon=True).start()
        self.url = f"http://127.0.0.1:{self._server.server_port}/"

    def close(self):
        self._server.shutdown()
        self._server.server_close()

    def mark(self):
        """A place in the reports: everything later comes after it."""
        return len(self.reports)

    def count(self, kind, since=0):
        return len(self.of(kind, since))

    def of(self, kind, since=0):
        return [report for report in self.reports[since:] if report.kind == kind]

    def wait_for(self, kind, since=0, timeout=PATIENCE):
        return wait_until(lambda: self.of(kind, since), f"the page reports {kind}", timeout)[0]

    def wait_for_picture(self, since=0, timeout=PATIENCE):
        """The picture that was pasted into the page, in RGB."""
        png = self.wait_for("paste", since, timeout).body
        return Image.open(io.BytesIO(png)).convert("RGB")

    def clicks(self, since=0):
        """Where the page was clicked, in coordinates of the screen."""
        return [tuple(json.loads(report.body)) for report in self.of("click", since)]

    def _handler(self):
        path, reports = self._page, self.reports

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                with open(path, "rb") as file:
                    self._answer(200 if self.path == "/" else 404, file.read())

            def do_POST(self):
                body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
                reports.append(Report(self.path[1:], body, time.monotonic()))
                self._answer(200, b"")

            def _answer(self, status, body):
                self.send_response(status)
                self.send_header("Content-Type", "text/html")
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                pass

        return Handler


class Browser:
    """One Chromium window that shows the chat page, or another `page` of that title and manners.
    It takes seconds to start: share it."""

    def __init__(self, desktop, rectangle=(640, 60, 600, 600), options=(), page=_CHAT_PAGE):
        self.page = ChatPage(page)
        self._desktop = desktop
        x, y, width, height = rectangle
        self.process = desktop.processes.start(
            "chromium", "chromium", "--no-sandbox", "--disable-gpu", "--no-first-run",
            "--no-default-browser-check", "--disable-background-networking", "--disable-sync",
            "--disable-component-update", "--disable-dev-shm-usage", "--password-store=basic",
            "--disable-features=Translate,MediaRouter", f"--ozone-platform={desktop.session.kind}",
            "--force-device-scale-factor=1", f"--window-position={x},{y}",
            f"--window-size={width},{height}", f"--user-data-dir={desktop.folder}/chromium",
            *options, f"--app={self.page.url}")
        self.page.wait_for("ready", timeout=40)
        self.window = wait_until(self._find_window, "Chromium's window is in the client list")

    def close(self):
        self._desktop.processes.stop(self.process)
        self.page.close()

    def _find_window(self):
        observer = self._desktop.observer
        for window in observer.client_list():
            if "Local chat" in observer.title(window):
                return window
        return None

"""Pages for real browsers, on this machine only; each request identifies its browser."""

import html
import threading
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer

PAGE = """<!DOCTYPE html>
<html><head><title>{title}</title></head>
<body><h1>{title}</h1><p>This page was asked for by</p><p><b>{agent}</b></p></body></html>
"""


class Pages:
    """Serves a page under every path; `requests` holds a pair of path and user agent for each request."""

    def __init__(self):
        self.requests = []
        self.server = ThreadingHTTPServer(("127.0.0.1", 0), self.handler())
        self.address = f"http://127.0.0.1:{self.server.server_address[1]}"
        threading.Thread(target=self.server.serve_forever, daemon=True).start()

    def handler(self):
        requests = self.requests

        class Handler(BaseHTTPRequestHandler):
            def do_GET(self):
                agent = self.headers.get("User-Agent", "")
                requests.append((self.path, agent))
                title = self.path.partition("?")[0].strip("/").replace("/", ", ").capitalize()
                body = PAGE.format(title=html.escape(title), agent=html.escape(agent)).encode()
                self.send_response(200)
                self.send_header("Content-Type", "text/html; charset=utf-8")
                self.send_header("Content-Length", str(len(body)))
                self.end_headers()
                self.wfile.write(body)

            def log_message(self, *_):
                """Logs nothing: the demonstration prints a table of its own."""

        return Handler

    def close(self):
        self.server.shutdown()
        self.server.server_close()

#!/usr/bin/env python3
"""A web server on a free port of this computer for requests.cpp, and for as long as that runs.

    web_server.py COMMAND ARGUMENTS...    runs the command with the server's address behind its arguments
"""

import subprocess
import sys
import threading
import time
from http.server import BaseHTTPRequestHandler, ThreadingHTTPServer


class Answers(BaseHTTPRequestHandler):
    def log_message(self, *_):
        pass

    def answer(self, body, status=200, extra=()):
        self.send_response(status)
        self.send_header("X-Server", "checks")
        self.send_header("Content-Length", str(len(body)))
        for name, content in extra:
            self.send_header(name, content)
        self.end_headers()
        if self.command != "HEAD":
            self.wfile.write(body)

    def body(self):
        return self.rfile.read(int(self.headers.get("Content-Length") or 0))

    def silent(self):
        time.sleep(30)

    def half(self):
        self.wfile.write(b"HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\nhalf")
        self.wfile.flush()
        time.sleep(30)

    def drops(self):
        self.wfile.write(b"HTTP/1.1 200 OK\r\nContent-Length: 1000000\r\n\r\n")
        for _ in range(300):
            self.wfile.write(b"x")
            self.wfile.flush()
            time.sleep(0.1)

    def garbage(self):
        self.wfile.write(b"\x00\xff no answer at all\r\n\r\n")
        self.close_connection = True

    def serve(self):
        path, _, query = self.path.partition("?")
        special = {"/silent": self.silent, "/half": self.half, "/drops": self.drops, "/garbage": self.garbage}
        plain = {"/hello": "hello ä", "/query": query, "/json": '{"a": [1, 2.5]}', "/large": "x" * 100000,
                 "/echo-header": self.headers.get("X-Test", ""), "/agent": self.headers.get("User-Agent", "")}
        if path in special:
            self.close_connection = True
            try:
                special[path]()
            except OSError:
                pass  # the caller has given up, as it should
        elif path in plain:
            self.answer(plain[path].encode())
        elif path == "/redirect":
            self.answer(b"", 302, [("Location", "/hello")])
        elif path == "/echo":
            self.answer(self.headers.get("Content-Type", "").encode() + b":" + self.body())
        elif path == "/echo-json":
            self.answer(self.body())
        else:
            self.body()
            self.answer(b"nothing here", 404)

    do_GET = do_POST = do_PUT = do_HEAD = serve


def main():
    server = ThreadingHTTPServer(("127.0.0.1", 0), Answers)
    server.daemon_threads = True
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return subprocess.run([*sys.argv[1:], f"http://127.0.0.1:{server.server_port}"]).returncode


if __name__ == "__main__":
    sys.exit(main())

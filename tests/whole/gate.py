"""A gate before the service, at which requests and replies can be held: what happens meanwhile happens in between."""

import http.client
import http.server
import threading

from parts import PATIENCE_SECONDS


class Hold:
    """One exchange that waits at the gate, either before the service has it or with the service's reply."""

    def __init__(self, method, path, side):
        self.exchange = (method, path, side)
        self._reached = threading.Event()
        self._released = threading.Event()

    def wait_until_reached(self):
        assert self._reached.wait(PATIENCE_SECONDS), f"nothing came to the gate: {self.exchange}"

    def release(self):
        self._released.set()

    def stop_here(self):
        self._reached.set()
        self._released.wait(PATIENCE_SECONDS)


class Gate:
    def __init__(self):
        self.service_port = None
        self._holds = []
        self._lock = threading.Lock()
        handler = type("Handler", (_Handler,), {"gate": self})
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        self.origin = f"http://127.0.0.1:{server.server_port}"
        threading.Thread(target=server.serve_forever, daemon=True).start()

    def hold_request(self, method, path):
        return self._add(Hold(method, path, "request"))

    def hold_reply(self, method, path):
        return self._add(Hold(method, path, "reply"))

    def pass_through(self, *exchange):
        with self._lock:
            hold = next((hold for hold in self._holds if hold.exchange == exchange), None)
            if hold:
                self._holds.remove(hold)
        if hold:
            hold.stop_here()

    def _add(self, hold):
        with self._lock:
            self._holds.append(hold)
        return hold


class _Handler(http.server.BaseHTTPRequestHandler):
    gate = None

    def _forward(self):
        body = self.rfile.read(int(self.headers.get("Content-Length", 0)))
        self.gate.pass_through(self.command, self.path, "request")
        service = http.client.HTTPConnection("127.0.0.1", self.gate.service_port, timeout=PATIENCE_SECONDS)
        service.request(self.command, self.path, body, dict(self.headers))
        reply = service.getresponse()
        reply_body = reply.read()
        service.close()
        self.gate.pass_through(self.command, self.path, "reply")
        self.send_response_only(reply.status)
        for name, value in reply.getheaders():
            if name.lower() not in ("connection", "keep-alive", "transfer-encoding"):
                self.send_header(name, value)
        self.end_headers()
        self.wfile.write(reply_body)

    do_GET = do_POST = do_PUT = do_HEAD = _forward

    def log_message(self, *_):
        pass

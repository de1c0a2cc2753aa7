#!/usr/bin/python3
"""A normal GET's latency while N hostile TLS connections are held open.

    slow_clients.py --port PORT --connections N --mode slow|silent
                    [--requests 10] [--max-time 5] [--per-address 8] [--settle 12]

Each hostile connection completes the TLS handshake and then either sends one
byte of a never-ending request header every second (slow) or nothing at all
(silent). A connection the server drops is opened again at once, as an
attacker would, so N stay open or pending all along. They come from
127.0.2.1, 127.0.2.2, ... (PER_ADDRESS each), so that a server's limit per
client address does not decide the outcome; the measured GETs come from
127.0.0.1. Once the connections have had SETTLE seconds (by default longer
than the service's 10 s header limit, so that dropped slow connections are
being opened again), curl fetches
https://127.0.0.1:PORT/redfish/v1 REQUESTS times, one after the other, each
given MAX_TIME seconds. One JSON line goes to standard output.

Standard library and curl only.
"""
import argparse
import json
import socket
import ssl
import statistics
import subprocess
import threading
import time

HEADER = b"GET /redfish/v1 HTTP/1.1\r\nHost: 127.0.0.1\r\nX-Slow: " + b"a" * 100000


class Hostile:
    """N connections kept open by threads of their own until stop()."""

    def __init__(self, port, count, mode, per_address):
        self.port = port
        self.mode = mode
        self.stopping = threading.Event()
        self.lock = threading.Lock()
        self.established = 0  # handshakes completed, now open
        self.opened = 0  # handshakes completed in all
        self.dropped = 0  # established connections the server closed
        self.context = ssl.SSLContext(ssl.PROTOCOL_TLS_CLIENT)
        self.context.check_hostname = False
        self.context.verify_mode = ssl.CERT_NONE
        self.threads = [
            threading.Thread(target=self._run, args=(f"127.0.2.{1 + i // per_address}",),
                             daemon=True)
            for i in range(count)
        ]
        for thread in self.threads:
            thread.start()

    def _count(self, name, step):
        with self.lock:
            setattr(self, name, getattr(self, name) + step)

    def _run(self, source):
        while not self.stopping.is_set():
            try:
                raw = socket.create_connection(("127.0.0.1", self.port), timeout=120,
                                               source_address=(source, 0))
            except OSError:
                self.stopping.wait(0.2)
                continue
            try:
                with self.context.wrap_socket(raw) as tls:
                    self._count("established", 1)
                    self._count("opened", 1)
                    try:
                        self._hold(tls)
                    except OSError:
                        pass  # reset by the server
                    self._count("established", -1)
                    if not self.stopping.is_set():
                        self._count("dropped", 1)
            except OSError:
                raw.close()  # no handshake: refused, reset or timed out

    def _hold(self, tls):
        tls.settimeout(1.0)
        sent = 0
        while not self.stopping.is_set():
            if self.mode == "slow":
                tls.sendall(HEADER[sent:sent + 1])
                sent = (sent + 1) % len(HEADER)
            try:
                if tls.recv(1024) == b"":
                    return  # closed by the server
            except socket.timeout:
                pass  # one second without a word: the next byte

    def stop(self):
        self.stopping.set()


def fetch(port, max_time):
    """The seconds one fresh curl GET took, or None when it failed or timed out."""
    result = subprocess.run(
        ["curl", "-sk", "-o", "/dev/null", "--max-time", str(max_time), "-w",
         "%{http_code} %{time_total}", f"https://127.0.0.1:{port}/redfish/v1"],
        capture_output=True, text=True, check=False)
    code, _, seconds = result.stdout.partition(" ")
    return float(seconds) if result.returncode == 0 and code == "200" else None


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--port", type=int, required=True)
    parser.add_argument("--connections", type=int, required=True)
    parser.add_argument("--mode", choices=("slow", "silent"), required=True)
    parser.add_argument("--requests", type=int, default=10)
    parser.add_argument("--max-time", type=float, default=5)
    parser.add_argument("--per-address", type=int, default=8)
    parser.add_argument("--settle", type=float, default=12)
    arguments = parser.parse_args()

    hostile = Hostile(arguments.port, arguments.connections, arguments.mode,
                      arguments.per_address)
    time.sleep(arguments.settle)
    established = hostile.established
    times = [fetch(arguments.port, arguments.max_time) for _ in range(arguments.requests)]
    hostile.stop()
    answered = sorted(t for t in times if t is not None)
    print(json.dumps({
        "connections": arguments.connections,
        "mode": arguments.mode,
        "established_at_start": established,
        "handshakes": hostile.opened,
        "dropped_by_server": hostile.dropped,
        "answered": len(answered),
        "failed_or_timed_out": len(times) - len(answered),
        "max_time_s": arguments.max_time,
        "median_ms": round(statistics.median(answered) * 1000, 1) if answered else None,
        "max_ms": round(answered[-1] * 1000, 1) if answered else None,
        "times_ms": [None if t is None else round(t * 1000, 1) for t in times],
    }))


if __name__ == "__main__":
    main()

#!/usr/bin/python3
"""zeda-redfishd and zeda-redfish-user as programs: the daemon serves the sample
inventory over HTTPS on a free loopback port, and every answer that matters to
a client or an attacker is checked: open and closed resources, Basic and
session logins, methods, limits (413, 431, 429, slow headers), hostile targets,
TLS versions, the self-signed certificate, bad configuration, SIGTERM.
Standard library only."""
import argparse
import base64
import http.client
import json
import os
import select
import signal
import socket
import ssl
import stat
import subprocess
import sys
import tempfile
import threading
import time
import warnings

warnings.filterwarnings("ignore", category=DeprecationWarning)

FAILURES = []
HEADER_TIMEOUT = 10  # kHeaderTimeout of redfish/src/Limits.h


def check(condition, what):
    if not condition:
        FAILURES.append(what)
        print("FAIL:", what, flush=True)
    return condition


def free_port():
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        return s.getsockname()[1]


def client_context():
    ctx = ssl.create_default_context()
    ctx.check_hostname = False
    ctx.verify_mode = ssl.CERT_NONE
    return ctx


class Service:
    def __init__(self, args, folder, name, redfish, extra=None):
        self.port = free_port()
        self.folder = folder
        section = {"listen": f"127.0.0.1:{self.port}", "accounts": os.path.join(folder, "accounts")}
        section.update(redfish)
        config = {"programData": os.path.join(folder, name + "-pd"),
                  "sources": [{"type": "file", "path": args.inventory}], "redfish": section}
        config.update(extra or {})
        self.config = os.path.join(folder, name + ".json")
        with open(self.config, "w") as f:
            json.dump(config, f)
        self.log = open(os.path.join(folder, name + ".log"), "w+")
        self.process = subprocess.Popen([args.daemon, "--config", self.config],
                                        stdout=self.log, stderr=subprocess.STDOUT)
        for _ in range(100):
            try:
                self.request("GET", "/redfish/v1")
                return
            except OSError:
                if self.process.poll() is not None:
                    break
                time.sleep(0.1)
        raise RuntimeError("the daemon did not start: " + self.log_text())

    def log_text(self):
        self.log.flush()
        with open(self.log.name) as f:
            return f.read()

    def connect(self):
        return http.client.HTTPSConnection("127.0.0.1", self.port, context=client_context(), timeout=15)

    def request(self, method, path, headers=None, body=None, connection=None):
        own = connection is None
        c = connection or self.connect()
        try:
            c.request(method, path, body=body, headers=headers or {})
            r = c.getresponse()
            data = r.read()
            return r.status, {k.lower(): v for k, v in r.getheaders()}, data
        finally:
            if own:
                c.close()

    def raw(self, data, read_timeout=15):
        """Sends raw bytes over TLS; returns what came back until the server closed."""
        with socket.create_connection(("127.0.0.1", self.port), timeout=read_timeout) as plain:
            with client_context().wrap_socket(plain) as s:
                try:
                    s.sendall(data)
                except (ssl.SSLError, OSError):
                    # The server may answer (413, 431) and close before it
                    # has read all we send; what it answered is read below.
                    pass
                out = b""
                try:
                    while True:
                        chunk = s.recv(65536)
                        if not chunk:
                            break
                        out += chunk
                        if b"\r\n\r\n" in out and b"Connection: close" not in out and len(out) > 0:
                            # a keep-alive answer: stop after its body
                            head, _, rest = out.partition(b"\r\n\r\n")
                            length = [int(l.split(b":")[1]) for l in head.split(b"\r\n")
                                      if l.lower().startswith(b"content-length:")]
                            if length and len(rest) >= length[0]:
                                break
                except (ssl.SSLError, ConnectionResetError, socket.timeout):
                    pass
                return out

    def stop(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                return self.process.wait(timeout=10)
            except subprocess.TimeoutExpired:
                self.process.kill()
                return None
        return self.process.returncode


def basic(user, password):
    return {"Authorization": "Basic " + base64.b64encode(f"{user}:{password}".encode()).decode()}


def status_of(raw_answer):
    line = raw_answer.split(b"\r\n", 1)[0].split()
    return int(line[1]) if len(line) > 1 and line[1].isdigit() else None


def test_user_tool(args, folder):
    accounts = os.path.join(folder, "accounts")
    tool = args.user_tool

    def run(argv, stdin=""):
        p = subprocess.run([tool] + argv, input=stdin, capture_output=True, text=True)
        return p.returncode, p.stderr

    rc, err = run(["--accounts", accounts, "add", "tester"], "Tester-Pw-1\n")
    check(rc == 0 and err == "", f"add tester: {rc} {err!r}")
    check(stat.S_IMODE(os.stat(accounts).st_mode) == 0o600, "accounts file mode 0600")
    with open(accounts) as f:
        text = f.read()
    check(text.startswith("tester:$y$") and "Tester-Pw-1" not in text, "a yescrypt hash, no password")
    rc, _ = run(["--accounts", accounts, "add", "other"], "Other-Pw-2\n")
    rc, _ = run(["--accounts", accounts, "add", "gone"], "x\n")
    rc, err = run(["--accounts", accounts, "remove", "gone"])
    check(rc == 0, "remove gone")
    for argv, stdin, want, words in [
        (["--accounts", accounts, "add", "bad name"], "x\n", 2, "bad account name"),
        (["--accounts", accounts, "add", "x" * 65], "x\n", 2, "bad account name"),
        (["--accounts", accounts, "add", "empty"], "\n", 2, "password is empty"),
        (["--accounts", accounts, "add", "nothing"], "", 2, "no password"),
        (["--accounts", accounts, "delete", "x"], "", 2, "unknown command"),
        (["add", "x"], "x\n", 2, "--accounts FILE is missing"),
        (["--accounts", accounts, "add"], "x\n", 2, "NAME is missing"),
        (["--accounts", accounts, "--bogus", "add", "x"], "x\n", 2, "unknown option"),
        (["--accounts", accounts, "remove", "nobody"], "", 1, "no account"),
        (["--accounts", "/nonexistent/dir/accounts", "add", "x"], "x\n", 1, "Cannot write"),
    ]:
        rc, err = run(argv, stdin)
        check(rc == want and err.count("\n") == 1 and words in err,
              f"zeda-redfish-user {argv}: status {rc} (want {want}), {err!r}")
    with open(accounts) as f:
        names = [line.split(":")[0] for line in f]
    check(names == ["tester", "other"], f"accounts after the refusals: {names}")


def test_basics(service):
    s, h, body = service.request("GET", "/redfish/v1")
    check(s == 200 and "Systems" in json.loads(body), f"service root without credentials: {s}")
    check(h.get("odata-version") == "4.0", "OData-Version: 4.0")
    check(h.get("content-type") == "application/json;charset=utf-8", f"Content-Type {h.get('content-type')}")
    check(h.get("cache-control") == "no-store", "Cache-Control: no-store")
    check("strict-transport-security" in h and h.get("x-content-type-options") == "nosniff",
          "security headers")
    s, h, head_body = service.request("HEAD", "/redfish/v1")
    check(s == 200 and head_body == b"" and h.get("content-length") == str(len(body)),
          f"HEAD: {s}, {len(head_body)} bytes, length {h.get('content-length')}")
    s, _, body = service.request("GET", "/redfish")
    check(s == 200 and json.loads(body) == {"v1": "/redfish/v1/"}, "/redfish")
    for path in ["/redfish/v1/$metadata", "/redfish/v1/odata"]:
        s, _, _ = service.request("GET", path)
        check(s == 200, f"{path} without credentials: {s}")
    s, h, body = service.request("GET", "/redfish/v1/Systems")
    check(s == 401 and h.get("www-authenticate", "").startswith("Basic realm="),
          f"Systems without credentials: {s} {h.get('www-authenticate')}")
    check("NoValidSession" in json.loads(body)["error"]["code"], "401 error body")
    good = basic("tester", "Tester-Pw-1")
    s, _, body = service.request("GET", "/redfish/v1/Systems", good)
    check(s == 200 and json.loads(body)["Members"], f"Systems with Basic: {s}")
    s, _, _ = service.request("GET", "/redfish/v1/Systems", basic("tester", "wrong-password-xyz"))
    check(s == 401, f"wrong password: {s}")
    s, _, _ = service.request("GET", "/redfish/v1/Systems", {"Authorization": "Basic !!!!"})
    check(s == 401, f"garbage Basic: {s}")
    s, _, body = service.request("GET", "/redfish/v1/Nothing/Here", good)
    check(s == 404 and "ResourceNotFound" in json.loads(body)["error"]["code"], f"unknown path: {s}")
    for method in ["POST", "PUT", "PATCH", "DELETE"]:
        s, h, body = service.request(method, "/redfish/v1/Systems", good, body=b"{}")
        check(s == 405 and h.get("allow") == "GET, HEAD" and "OperationNotAllowed" in body.decode(),
              f"{method} Systems: {s} Allow {h.get('allow')}")
    s, _, _ = service.request("GET", "/redfish/v1/AccountService/Accounts/tester", good)
    check(s == 200, f"own account: {s}")


def test_sessions(service):
    path = "/redfish/v1/SessionService/Sessions"
    s, h, body = service.request("POST", path, {"Content-Type": "application/json"},
                                 json.dumps({"UserName": "tester", "Password": "Tester-Pw-1"}))
    token, location = h.get("x-auth-token", ""), h.get("location", "")
    check(s == 201 and len(token) >= 32 and location.startswith(path + "/"),
          f"login: {s} token {len(token)} location {location}")
    s, _, _ = service.request("GET", "/redfish/v1/Systems", {"X-Auth-Token": token})
    check(s == 200, f"GET with token: {s}")
    s, _, body = service.request("GET", location, {"X-Auth-Token": token})
    check(s == 200 and json.loads(body).get("UserName") == "tester", f"own session: {s}")
    for bad in ["", "x", "0" * 48, token[:-1], token + "0", "A" * 5000]:
        s, _, _ = service.request("GET", "/redfish/v1/Systems", {"X-Auth-Token": bad} if bad else {})
        check(s in (401, 431), f"bad token {bad[:10]!r}...: {s}")
    s, _, _ = service.request("DELETE", location, basic("other", "Other-Pw-2"))
    check(s == 403, f"logout of someone else's session: {s}")
    s, _, _ = service.request("DELETE", location, {"X-Auth-Token": token})
    check(s == 204, f"logout: {s}")
    s, _, _ = service.request("GET", "/redfish/v1/Systems", {"X-Auth-Token": token})
    check(s == 401, f"token after logout: {s}")
    for body, want in [('{"UserName": "tester", "Password": "nope"}', 401), ("{bad json", 400),
                       ('{"UserName": "tester"}', 400), ("", 400)]:
        s, _, _ = service.request("POST", path, {"Content-Type": "application/json"}, body)
        check(s == want, f"login with {body!r}: {s}, not {want}")


def test_hostile(service):
    auth = "Authorization: Basic " + base64.b64encode(b"tester:Tester-Pw-1").decode()
    for target, want in [(b"/redfish/v1/../../etc/passwd", 404),
                         (b"/redfish/v1/%2e%2e/%2e%2e/etc/passwd", 404),
                         (b"/redfish/v1/Systems/%00", 404), (b"/redfish/v1/Systems/a%2Fb", 404),
                         (b"/redfish/v1/Systems/\xff\xfe", None), (b"/redfish/v1/Systems/%ff%fe", 404),
                         (b"/redfish/v1/Systems/%zz", 400), (b"/" + b"a" * 3000, 414)]:
        out = service.raw(b"GET " + target + b" HTTP/1.1\r\nHost: x\r\n" + auth.encode() +
                          b"\r\nConnection: close\r\n\r\n")
        got = status_of(out)
        check(got is not None and 400 <= got < 500 and (want is None or got == want),
              f"GET {target[:40]!r}: {got}, want {want or '4xx'}")
    for garbage in [b"\x00\x01\x02 garbage\r\n\r\n", b"GET\r\n\r\n", b"GET / HTTP/9.9\r\n\r\n",
                    b"GET /redfish/v1 HTTP/1.1\r\nBad Header\r\n\r\n",
                    b"GET /redfish/v1 HTTP/1.1\r\nContent-Length: -5\r\n\r\n"]:
        got = status_of(service.raw(garbage))
        check(got is None or 400 <= got < 500, f"garbage {garbage[:20]!r}: {got}")
    big = b"x" * (100 * 1024)
    out = service.raw(b"POST /redfish/v1/SessionService/Sessions HTTP/1.1\r\nHost: x\r\n"
                      b"Content-Length: " + str(len(big)).encode() + b"\r\n\r\n" + big)
    check(status_of(out) == 413, f"100 KiB body: {status_of(out)}")
    out = service.raw(b"GET /redfish/v1 HTTP/1.1\r\nHost: x\r\nX-Big: " + b"y" * 20000 + b"\r\n\r\n")
    check(status_of(out) == 431, f"20 KB header: {status_of(out)}")
    many = b"".join(b"X-%d: v\r\n" % i for i in range(2000))
    out = service.raw(b"GET /redfish/v1 HTTP/1.1\r\nHost: x\r\n" + many + b"\r\n")
    check(status_of(out) == 431, f"2000 header fields: {status_of(out)}")


def test_connection_limit(service):
    """32 connections per client address: one more is closed at once. Which
    one is the 33rd is the server's order of accepting, not the client's."""
    held = [socket.create_connection(("127.0.0.1", service.port), timeout=5) for _ in range(33)]
    try:
        closed = 0
        deadline = time.time() + 5
        while not closed and time.time() < deadline:
            readable, _, _ = select.select(held, [], [], 0.2)
            for c in readable:
                try:
                    closed += c.recv(1) == b""
                except (ConnectionResetError, socket.timeout):
                    closed += 1
        check(closed == 1, f"one connection over 32 of one address is closed ({closed} closed)")
    finally:
        for s in held:
            s.close()
    time.sleep(0.5)
    s, _, _ = service.request("GET", "/redfish/v1")
    check(s == 200, f"after the held connections closed: {s}")


def served_certificate(port):
    with socket.create_connection(("127.0.0.1", port), timeout=10) as plain:
        with client_context().wrap_socket(plain) as s:
            return s.getpeercert(binary_form=True)


def wait_for_log(service, words, seconds=10):
    deadline = time.time() + seconds
    while time.time() < deadline:
        if words in service.log_text():
            return True
        time.sleep(0.1)
    return False


def hang_up_with(service, section, words):
    """Writes the configuration with `section` as its redfish member, sends
    SIGHUP and waits for the log line containing `words`."""
    with open(service.config) as f:
        config = json.load(f)
    config["redfish"] = section
    with open(service.config, "w") as f:
        json.dump(config, f)
    before = service.log_text().count(words)
    service.process.send_signal(signal.SIGHUP)
    deadline = time.time() + 10
    while time.time() < deadline and service.log_text().count(words) == before:
        time.sleep(0.1)
    return service.log_text().count(words) > before


def test_hang_up(args, service):
    """SIGHUP reads the configuration again: a good redfish section is applied
    whole (address, certificate, accounts, rate), a bad one or one whose
    address cannot be listened on is reported and the section in use stays."""
    with open(service.config) as f:
        good = f.read()
    section = json.loads(good)["redfish"]
    service.process.send_signal(signal.SIGHUP)
    check(wait_for_log(service, "is good, nothing to change"),
          "SIGHUP with an unchanged configuration is logged")
    with open(service.config, "w") as f:
        f.write('{"redfish": {"listen": "nowhere"}}')
    service.process.send_signal(signal.SIGHUP)
    check(wait_for_log(service, "the configuration in use stays"),
          "SIGHUP with a bad configuration is reported")
    log = service.log_text()
    check("redfish.listen" in log, "the bad configuration's line names the place")
    with open(service.config, "w") as f:
        f.write(good)
    s, _, _ = service.request("GET", "/redfish/v1")
    check(s == 200 and service.process.poll() is None, f"serving after SIGHUP: {s}")

    # Another address, another certificate and another accounts file.
    folder = service.folder
    accounts = os.path.join(folder, "reload-accounts")
    subprocess.run([args.user_tool, "--accounts", accounts, "add", "reloaded"],
                   input="Reloaded-Pw-3\n", text=True, check=True, capture_output=True)
    pair = {"programData": os.path.join(folder, "reload-pd"),
            "sources": [{"type": "file", "path": args.inventory}], "redfish": {}}
    pair_config = os.path.join(folder, "reload-pair.json")
    with open(pair_config, "w") as f:
        json.dump(pair, f)
    subprocess.run([args.daemon, "--config", pair_config, "--make-certificate"], check=True,
                   capture_output=True)
    old_port, old_certificate = service.port, served_certificate(service.port)
    new_port = free_port()
    moved = dict(section, listen=f"127.0.0.1:{new_port}", accounts=accounts,
                 certificate=os.path.join(folder, "reload-pd", "redfish", "server.crt"),
                 key=os.path.join(folder, "reload-pd", "redfish", "server.key"))
    check(hang_up_with(service, moved, "SIGHUP: applied the redfish section"),
          "SIGHUP with a changed section: applied")
    service.port = new_port
    s, _, _ = service.request("GET", "/redfish/v1/Systems", basic("reloaded", "Reloaded-Pw-3"))
    check(s == 200, f"the new address and the new accounts: {s}")
    s, _, _ = service.request("GET", "/redfish/v1/Systems", basic("tester", "Tester-Pw-1"))
    check(s == 401, f"an account of the old accounts file after the reload: {s}")
    check(served_certificate(new_port) != old_certificate, "the new certificate is served")
    try:
        socket.create_connection(("127.0.0.1", old_port), timeout=5).close()
        check(False, "the old address still accepts connections")
    except OSError:
        pass

    # An address that cannot be listened on: nothing of the section applies.
    with socket.socket() as taken:
        taken.bind(("127.0.0.1", 0))
        taken.listen()
        taken_port = taken.getsockname()[1]
        blocked = dict(section, listen=f"127.0.0.1:{taken_port}")
        check(hang_up_with(service, blocked, "is not applied; the configuration in use stays"),
              "SIGHUP with an address in use: reported")
    log = service.log_text()
    check(f"Cannot listen on 127.0.0.1:{taken_port}" in log and
          f"still listening on 127.0.0.1:{new_port}" in log,
          "the line names the address refused and the one kept")
    s, _, _ = service.request("GET", "/redfish/v1/Systems", basic("reloaded", "Reloaded-Pw-3"))
    check(s == 200, f"after the refused address, the section in use stays: {s}")

    # Back to the section the service started with.
    check(hang_up_with(service, section, "SIGHUP: applied the redfish section"),
          "SIGHUP back to the first section")
    service.port = old_port
    s, _, _ = service.request("GET", "/redfish/v1/Systems", basic("tester", "Tester-Pw-1"))
    check(s == 200 and served_certificate(old_port) == old_certificate,
          f"back on the first address, accounts and certificate: {s}")
    with open(service.config, "w") as f:
        f.write(good)


def test_slowloris(service):
    """One header byte a second: dropped within the header timeout (plus slack)."""
    request = b"GET /redfish/v1 HTTP/1.1\r\nHost: x\r\nX-Slow: " + b"s" * 100
    start = time.monotonic()
    closed_after = None
    with socket.create_connection(("127.0.0.1", service.port), timeout=30) as plain:
        with client_context().wrap_socket(plain) as s:
            s.settimeout(1.5)
            for byte in request:
                try:
                    s.sendall(bytes([byte]))
                    if s.recv(1) == b"":
                        closed_after = time.monotonic() - start
                        break
                except socket.timeout:
                    pass
                except (OSError, ssl.SSLError):
                    closed_after = time.monotonic() - start
                    break
                if time.monotonic() - start > HEADER_TIMEOUT + 10:
                    break
    check(closed_after is not None and closed_after <= HEADER_TIMEOUT + 3,
          f"slow header dropped after {closed_after} s (limit {HEADER_TIMEOUT} s)")


def test_tls(service):
    ctx = client_context()
    ctx.maximum_version = ssl.TLSVersion.TLSv1_1
    try:
        ctx.minimum_version = ssl.TLSVersion.TLSv1
    except ValueError:
        pass
    refused = False
    try:
        with socket.create_connection(("127.0.0.1", service.port), timeout=5) as plain:
            with ctx.wrap_socket(plain):
                pass
    except (ssl.SSLError, OSError):
        refused = True
    check(refused, "TLS 1.1 handshake refused")
    with socket.create_connection(("127.0.0.1", service.port), timeout=5) as plain:
        with client_context().wrap_socket(plain) as s:
            check(s.version() in ("TLSv1.2", "TLSv1.3"), f"TLS version {s.version()}")
            der = s.getpeercert(binary_form=True)
    check(socket.gethostname().encode() in der, "self-signed certificate names the host")
    pd = os.path.join(service.folder, "main-pd", "redfish")
    key = os.path.join(pd, "server.key")
    check(os.path.exists(os.path.join(pd, "server.crt")) and os.path.exists(key),
          "self-signed pair under programData/redfish")
    check(os.path.exists(key) and stat.S_IMODE(os.stat(key).st_mode) == 0o600, "key mode 0600")
    with socket.create_connection(("127.0.0.1", service.port), timeout=5) as plain:
        plain.sendall(b"GET /redfish/v1 HTTP/1.1\r\nHost: x\r\n\r\n")
        plain.settimeout(5)
        try:
            answer = plain.recv(100)
        except (OSError, socket.timeout):
            answer = b""
    check(not answer.startswith(b"HTTP/"), f"plain HTTP is not served: {answer[:20]!r}")


def test_rate_limit(args, folder):
    service = Service(args, folder, "rate", {"requestsPerSecond": 2})  # burst 4
    try:
        c = service.connect()
        statuses = []
        headers = {}
        for _ in range(8):
            s, h, _ = service.request("GET", "/redfish/v1", connection=c)
            statuses.append(s)
            if s == 429:
                headers = h
        c.close()
        check(429 in statuses and statuses[0] == 200, f"rate limit: {statuses}")
        check(headers.get("retry-after", "").isdigit(), f"Retry-After: {headers.get('retry-after')}")
        time.sleep(1.1)
        s, _, _ = service.request("GET", "/redfish/v1")
        check(s == 200, f"after a second: {s}")
    finally:
        service.stop()


def test_bad_config(args, folder):
    cases = [({"redfish": {"listen": "nowhere"}}, "redfish.listen"),
             ({"redfish": {"color": "red"}}, "redfish.color: unknown member"),
             ({"redfish": "on"}, "redfish: expected an object"),
             ({"sources": [{"type": "nfs"}]}, "sources[0].type")]
    for i, (change, words) in enumerate(cases):
        config = {"programData": os.path.join(folder, "bad-pd"),
                  "sources": [{"type": "file", "path": args.inventory}]}
        config.update(change)
        path = os.path.join(folder, f"bad{i}.json")
        with open(path, "w") as f:
            json.dump(config, f)
        p = subprocess.run([args.daemon, "--config", path], capture_output=True, text=True, timeout=20)
        check(p.returncode == 2 and p.stderr.count("\n") == 1 and
              f"Bad configuration file {path}: " in p.stderr and words in p.stderr,
              f"bad configuration {change}: status {p.returncode}, {p.stderr!r}")
    p = subprocess.run([args.daemon, "--bogus"], capture_output=True, text=True, timeout=20)
    check(p.returncode == 2 and p.stderr.count("\n") == 1, f"bad argument: {p.returncode} {p.stderr!r}")
    p = subprocess.run([args.daemon, "--config", os.path.join(folder, "none.json")],
                       capture_output=True, text=True, timeout=20)
    check(p.returncode == 2 and "none.json" in p.stderr, f"missing configuration: {p.stderr!r}")


def test_make_certificate(args, folder):
    """--make-certificate (run by the package's installation) makes the pair
    the first start would make, keeps an existing one, makes nothing when the
    configuration names a certificate, and says which in one line."""
    data = os.path.join(folder, "cert-pd")
    config = {"programData": data, "sources": [{"type": "file", "path": args.inventory}],
              "redfish": {"listen": "127.0.0.1:1"}}
    path = os.path.join(folder, "cert.json")
    with open(path, "w") as f:
        json.dump(config, f)
    crt, key = os.path.join(data, "redfish", "server.crt"), os.path.join(data, "redfish", "server.key")
    run = lambda p: subprocess.run([args.daemon, "--config", p, "--make-certificate"],
                                   capture_output=True, text=True, timeout=20)
    p = run(path)
    check(p.returncode == 0 and p.stdout == f"zeda-redfishd: made the self-signed certificate {crt} "
          f"and its key {key}\n" and os.path.isfile(crt) and
          stat.S_IMODE(os.stat(key).st_mode) == 0o600,
          f"--make-certificate: {p.returncode} {p.stdout!r} {p.stderr!r}")
    before = [open(f, "rb").read() for f in (crt, key)] if os.path.isfile(key) else None
    p = run(path)
    check(p.returncode == 0 and p.stdout.startswith(f"zeda-redfishd: kept {crt}") and
          before == [open(f, "rb").read() for f in (crt, key)],
          f"a second --make-certificate: {p.returncode} {p.stdout!r}, pair unchanged: "
          f"{before is not None and before == [open(f, 'rb').read() for f in (crt, key)]}")
    named = dict(config, programData=os.path.join(folder, "cert-named-pd"))
    named["redfish"] = {"listen": "127.0.0.1:1", "certificate": crt, "key": key}
    path = os.path.join(folder, "cert-named.json")
    with open(path, "w") as f:
        json.dump(named, f)
    p = run(path)
    check(p.returncode == 0 and "nothing to make" in p.stdout and
          not os.path.exists(os.path.join(folder, "cert-named-pd", "redfish")),
          f"--make-certificate with a named certificate: {p.returncode} {p.stdout!r}")
    blocked = dict(config, programData=os.path.join(folder, "cert-file-pd"))
    with open(os.path.join(folder, "cert-file-pd"), "w") as f:
        f.write("a file where the folder would go\n")
    path = os.path.join(folder, "cert-blocked.json")
    with open(path, "w") as f:
        json.dump(blocked, f)
    p = run(path)
    check(p.returncode == 1 and p.stderr.count("\n") == 1 and "cert-file-pd" in p.stderr,
          f"--make-certificate where it cannot write: {p.returncode} {p.stderr!r}")


def one_nas_service(args, folder, name, disks):
    """The daemon over a generated inventory of one NAS of `disks` disks."""
    inventory = os.path.join(folder, f"inventory-{disks}.json")
    maker = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts", "lib",
                         "make_inventory.py")
    subprocess.run([sys.executable, maker, "1", str(disks), inventory], check=True)
    generated = argparse.Namespace(**vars(args))
    generated.inventory = inventory
    return Service(generated, folder, name, {"requestsPerSecond": 0})


def test_streamed(args, folder):
    """A Storage of 2,500 drives is streamed (chunked) and arrives whole; HEAD
    of it has no body; the connection serves the next request after it."""
    service = one_nas_service(args, folder, "big", 2500)
    try:
        c = service.connect()
        good = basic("tester", "Tester-Pw-1")
        s, h, body = service.request("GET", "/redfish/v1/Systems/gen00/Storage/1", good, connection=c)
        drives = json.loads(body).get("Drives", []) if s == 200 else []
        if s != 200:
            print(body[:500], service.log_text()[-1500:])
        check(s == 200 and h.get("transfer-encoding") == "chunked" and len(drives) == 2500,
              f"streamed Storage: {s}, {h.get('transfer-encoding')}, {len(drives)} drives")
        s, h, body = service.request("HEAD", "/redfish/v1/Systems/gen00/Storage/1", good, connection=c)
        check(s == 200 and body == b"", f"HEAD of a streamed resource: {s}, {len(body)} bytes")
        s, _, _ = service.request("GET", "/redfish/v1", connection=c)
        check(s == 200, f"the connection after a streamed reply: {s}")
        c.close()
    finally:
        service.stop()


def test_stop_while_streaming(args, folder):
    """SIGTERM while clients stream a Storage of 10,000 drives and while others
    asked for it and read nothing (the server's writes wait on full socket
    buffers): the service stops with status 0, whatever is still open."""
    service = one_nas_service(args, folder, "stop", 10000)
    target = "/redfish/v1/Systems/gen00/Storage/1"
    stop = threading.Event()
    answered = []

    def client():
        while not stop.is_set():
            try:
                c = service.connect()
                while not stop.is_set():
                    s, _, _ = service.request("GET", target, basic("tester", "Tester-Pw-1"),
                                              connection=c)
                    answered.append(s)
            except (OSError, http.client.HTTPException):
                time.sleep(0.05)

    stalled = []
    request = (f"GET {target} HTTP/1.1\r\nHost: x\r\nAuthorization: " +
               basic("tester", "Tester-Pw-1")["Authorization"] + "\r\n\r\n").encode()
    for _ in range(4):
        plain = socket.create_connection(("127.0.0.1", service.port), timeout=10)
        plain.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 4096)
        tls = client_context().wrap_socket(plain)
        tls.sendall(request)
        stalled.append(tls)
    clients = [threading.Thread(target=client) for _ in range(4)]
    for t in clients:
        t.start()
    # Until the streams run (the first request indexes 10,000 disks, slowly
    # under the sanitizers), then a little longer.
    deadline = time.time() + 60
    while len(answered) < 4 and time.time() < deadline:
        time.sleep(0.1)
    time.sleep(0.5)
    status = service.stop()
    stop.set()
    for t in clients:
        t.join(timeout=20)
    for tls in stalled:
        tls.close()
    check(answered and set(answered) == {200}, f"answers while streaming: {sorted(set(answered))}")
    check(status == 0 and "Stopped" in service.log_text(),
          f"SIGTERM while streaming: status {status}, {service.log_text()[-300:]!r}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--daemon", required=True)
    parser.add_argument("--user-tool", required=True)
    parser.add_argument("--inventory", required=True)
    parser.add_argument("--skip-slow", action="store_true")
    args = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        test_user_tool(args, folder)
        service = Service(args, folder, "main", {"requestsPerSecond": 0})
        try:
            test_basics(service)
            test_sessions(service)
            test_hostile(service)
            test_tls(service)
            test_connection_limit(service)
            test_hang_up(args, service)
            if not args.skip_slow:
                test_slowloris(service)
            s, _, _ = service.request("GET", "/redfish/v1/Systems", basic("tester", "Tester-Pw-1"))
            check(s == 200 and service.process.poll() is None, "still serving after all that")
            log = service.log_text()
            check('Failed login of user "tester" from 127.0.0.1' in log, "failed logins are logged")
            check("wrong-password-xyz" not in log and "Tester-Pw-1" not in log, "no password in the log")
        finally:
            rc = service.stop()
        check(rc == 0, f"SIGTERM: exit status {rc}")
        test_rate_limit(args, folder)
        test_streamed(args, folder)
        test_bad_config(args, folder)
        test_stop_while_streaming(args, folder)
        test_make_certificate(args, folder)
        if FAILURES:
            print(service.log_text()[-3000:])
    print(f"{len(FAILURES)} failure(s)")
    return 1 if FAILURES else 0


if __name__ == "__main__":
    sys.exit(main())

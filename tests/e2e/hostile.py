#!/usr/bin/python3
"""A service that misbehaves to order, byte by byte: a process of its own, so that a flood costs its tester nothing.

Takes one JSON object a line: {"good": {path: text}, "bad": {path: text}, "faults": {path: name}} replaces what is
answered and lets go of every connection that an earlier fault holds; {"port": number} listens there, or nowhere when it
is null. After each it tells {"port": ..., "met": {path: count}, "done": {path: count}, "commands": [path...],
"strayed": count}, all since the faults were set.
"""
import contextlib
import gzip
import json
import re
import socket
import struct
import sys
import threading
import time

LIMIT = 8 << 20  # what the client takes of a body
MOST = 16 << 20   # where a flood ends, so that a client without a limit does not fill the machine


def head(*fields, status="200 OK"):
    return "\r\n".join([f"HTTP/1.1 {status}", *fields, "\r\n"]).encode()


def whole(body, *fields, status="200 OK"):
    return head(f"Content-Length: {len(body)}", *fields, status=status) + body


def chunked(*pieces, last=b"0\r\n\r\n"):
    return head("Transfer-Encoding: chunked") + b"".join(b"%x\r\n%s\r\n" % (len(p), p) for p in pieces) + last


def sends(make):
    """Bytes, and the end of the connection."""
    def write(peer, body, server):
        peer.sendall(make(body).replace(b":%d/", b":%d/" % server.elsewhere))
        peer.shutdown(socket.SHUT_WR)
        peer.settimeout(2)
        while peer.recv(1 << 16):
            pass
    return write


def endless(start, piece):
    """At full speed, until the client has had enough."""
    def write(peer, _body, server):
        over, sent, block = server.over, 0, piece * max(1, (1 << 16) // len(piece))
        peer.sendall(start)
        while sent < MOST and not over.is_set():
            peer.sendall(block)
            sent += len(block)
    return write


def held(make, every=None):
    """The client waits for more, which comes a piece at a time or not at all until the fault ends."""
    def write(peer, body, server):
        over, data = server.over, make(body)
        step = 1 if every else max(1, len(data))
        for start in range(0, len(data), step):
            peer.sendall(data[start:start + step])
            if over.wait(every or 0):
                break
        over.wait()
    return write


def reset(make):
    def write(peer, body, _server):
        peer.sendall(make(body))
        time.sleep(0.05)
        peer.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    return write


def then_kept(make):
    """The connection stays open for the next request."""
    def write(peer, body, _server):
        peer.sendall(make(body))
        return True
    return write


def with_text(old, new):
    """The reply with a value that is in all of them replaced."""
    return sends(lambda body: whole(body.replace(old, new)))


def changed(change):
    """The reply with its record, which may be the only one of a list, replaced by what makes one that is larger."""
    def make(body):
        value = json.loads(body)
        return whole(json.dumps(change(value) if isinstance(value, dict) else change(*value)).encode())
    return sends(make)


def many(record):
    return [record | {"id": i, "device_id": f"{i:x}"} for i in range(10_000)]


def large(body):
    """A valid reply of 4 MiB, mostly brackets, which are the slowest to read."""
    return whole(re.sub(rb"}(]?)$", rb', "more": [' + b"[], " * (1 << 20) + rb"[]]}\1", body))


KEPT, TAKEN, EITHER = "kept", "taken", "either"  # what becomes of the value in the reply
CHALLENGE = 'WWW-Authenticate: Basic realm="service"'
ELSEWHERE = "Location: http://127.0.0.1:%d/elsewhere"
TWICE = b'HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}'

# Each fault is answered to one path while others meet the other paths; bytes are followed by the end of the connection.
FAULTS = {
    "nothing": (KEPT, sends(lambda b: b"")),
    "length too long": (KEPT, sends(lambda b: head(f"Content-Length: {len(b) + 9}") + b)),
    "length too short": (KEPT, sends(lambda b: head(f"Content-Length: {len(b) - 9}") + b)),
    "length negative": (EITHER, sends(lambda b: head("Content-Length: -1") + b)),
    "length huge": (KEPT, sends(lambda b: head(f"Content-Length: {(1 << 63) - 1}") + b)),
    "length beyond 64 bits": (EITHER, sends(lambda b: head(f"Content-Length: {1 << 70}") + b)),
    "length twice, alike": (EITHER, sends(lambda b: head(*[f"Content-Length: {len(b)}"] * 2) + b)),
    "length twice, unlike": (EITHER, sends(lambda b: head("Content-Length: 3", f"Content-Length: {len(b)}") + b)),
    "length no number": (EITHER, sends(lambda b: head("Content-Length: much") + b)),
    "chunk size bad": (KEPT, sends(lambda b: chunked(last=b"zz\r\n" + b + b"\r\n0\r\n\r\n"))),
    "chunk size huge": (KEPT, sends(lambda b: chunked(last=b"ffffffffffffffff\r\n" + b))),
    "chunk size endless": (KEPT, endless(head("Transfer-Encoding: chunked"), b"0")),
    "chunk extension endless": (KEPT, endless(head("Transfer-Encoding: chunked") + b"5;", b"x")),
    "chunks cut off": (KEPT, sends(lambda b: chunked(b, last=b"5\r\n"))),
    "chunks of a byte": (TAKEN, sends(lambda b: chunked(*(bytes([c]) for c in b)))),
    "chunks and a length": (EITHER, sends(lambda b: chunked(b).replace(b"\r\n", b"\r\nContent-Length: 7\r\n", 1))),
    "headers endless": (KEPT, endless(head()[:-2], b"X-More: and more\r\n")),
    "header line endless": (KEPT, endless(head()[:-2] + b"X-More: ", b"x")),
    "header without a name": (EITHER, sends(lambda b: whole(b, ": value", "no colon", "\0: \0"))),
    "status line endless": (KEPT, endless(b"HTTP/1.1 200 ", b"x")),
    "status no number": (KEPT, sends(lambda b: whole(b, status="OK 200"))),
    "interim replies first": (TAKEN, sends(lambda b: head(status="103 Early Hints") * 20 + whole(b))),
    "interim replies endless": (KEPT, endless(b"", head(status="102 Processing"))),
    "101": (KEPT, sends(lambda b: head("Upgrade: elsewhere", "Connection: Upgrade", status="101 Switching Protocols"))),
    "204": (KEPT, sends(lambda b: head(status="204 No Content"))),
    "304": (KEPT, sends(lambda b: head(status="304 Not Modified"))),
    "301 to itself": (KEPT, sends(lambda b: whole(b"", "Location: /api/status", status="301 Moved Permanently"))),
    "301 to elsewhere": (KEPT, sends(lambda b: whole(b"", ELSEWHERE, status="301 Moved Permanently"))),
    "308 to a file": (KEPT, sends(lambda b: whole(b"", "Location: file:///etc/passwd", status="308 Moved"))),
    "401 with a body": (TAKEN, sends(lambda b: whole(b, CHALLENGE, status="401 Unauthorized"))),
    "401 without": (KEPT, sends(lambda b: whole(b"", CHALLENGE, status="401 Unauthorized"))),
    "407 with a body": (TAKEN, sends(lambda b: whole(b, "Proxy-" + CHALLENGE[4:], status="407 Proxy Login"))),
    "404 with a body": (TAKEN, sends(lambda b: whole(b, status="404 Not Found"))),
    "404 with a page": (KEPT, sends(lambda b: whole(b"<html>Not found</html>", status="404 Not Found"))),
    "500 with a body": (TAKEN, sends(lambda b: whole(b, status="500 Internal Server Error"))),
    "503 without": (KEPT, sends(lambda b: whole(b"", status="503 Service Unavailable"))),
    "no header at all": (KEPT, sends(lambda b: b)),
    "HTTP/2": (KEPT, sends(lambda b: b"PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n" + bytes([0, 0, 0, 4, 0, 0, 0, 0, 0]) + b)),
    "TLS": (KEPT, sends(lambda b: bytes.fromhex("16030300310200002d0303") + bytes(range(38)) + b)),
    "zeros": (KEPT, sends(lambda b: bytes(4096))),
    "reset at once": (KEPT, reset(lambda b: b"")),
    "reset in the body": (KEPT, reset(lambda b: whole(b)[:-9])),
    "end in the header": (KEPT, sends(lambda b: whole(b)[:20])),
    "end in the body": (KEPT, sends(lambda b: whole(b)[:-9])),
    "body endless": (KEPT, endless(head("Connection: close"), b"[" + b"1," * 500)),
    "chunks endless": (KEPT, endless(chunked(last=b""), b"1000\r\n" + b" " * 4096 + b"\r\n")),
    "body over the limit": (KEPT, sends(lambda b: whole(b + b" " * LIMIT))),
    "large body": (TAKEN, sends(large)),
    "gzip": (EITHER, sends(lambda b: whole(gzip.compress(b), "Content-Encoding: gzip"))),
    "gzip, cut off": (KEPT, sends(lambda b: whole(gzip.compress(b)[:-12], "Content-Encoding: gzip"))),
    "gzip of much": (KEPT, sends(lambda b: whole(gzip.compress(b + bytes(LIMIT * 4)), "Content-Encoding: gzip"))),
    "null": (KEPT, sends(lambda b: whole(b"null"))),
    "deep": (KEPT, sends(lambda b: whole(b"[" * 100_000 + b"]" * 100_000))),
    "number too large": (KEPT, with_text(b'": 80808', b'": 1e999')),
    "wrong type": (KEPT, with_text(b'": 80808', b'": "8"')),
    "half a character": (KEPT, with_text(b'": "', b'": "\xe4\xb8')),
    "two replies": (TAKEN, then_kept(lambda b: whole(b) + TWICE)),
    "a reply and rubbish": (TAKEN, then_kept(lambda b: whole(b) + b"\0rubbish\r\n\r\n")),
}
ONLY = {"10,000 peers": ("/api/status", TAKEN, changed(lambda status: status | {"peers": many({"name": "Peer"})})),
        "10,000 devices": ("/api/devices", TAKEN, changed(many)),
        "400,000 entries": ("/api/history", TAKEN,
                            changed(lambda entry: [entry] + [{"id": i} for i in range(400_000)]))}
# These hold a poll until the fault ends.
HELD = {
    "never answered": (KEPT, held(lambda b: b"")),
    "a byte a second": (KEPT, held(whole, 1)),
    "half a header": (KEPT, held(lambda b: whole(b)[:20])),
    "half a body": (KEPT, held(lambda b: whole(b)[:-9])),
    "length too long, held": (KEPT, held(lambda b: head(f"Content-Length: {len(b) + 9}") + b)),
    "no last chunk, held": (KEPT, held(lambda b: chunked(b, last=b""))),
    "interim replies alone": (KEPT, held(lambda b: head(status="100 Continue"))),
    "101, held": (KEPT, held(lambda b: head("Upgrade: x", "Connection: Upgrade", status="101 Switching Protocols"))),
}
# These come before any request is read, so they meet all paths at once.
AT_ACCEPT = {
    "reset at accept": (KEPT, reset(lambda b: b"")),
    "end at accept": (KEPT, sends(lambda b: b"")),
    "reply before the request": (EITHER, sends(lambda b: whole(b"{}"))),
    "TLS before the request": (KEPT, sends(lambda b: b"\x15\x03\x01\x00\x02\x02\x28")),
}
ALL = FAULTS | HELD | AT_ACCEPT | {name: fault[1:] for name, fault in ONLY.items()}


class Server:
    def __init__(self):
        self.answers = {"good": {}, "bad": {}, "faults": {}}
        self.over = threading.Event()
        self.met, self.done, self.commands, self.strayed = {}, {}, [], 0
        self.listener, self.peers = None, set()
        elsewhere = socket.create_server(("127.0.0.1", 0))
        self.elsewhere = elsewhere.getsockname()[1]
        self.accept(elsewhere, self.count_stray)

    def count_stray(self, _peer):
        self.strayed += 1

    def obey(self, order):
        if "faults" in order:
            self.over.set()
            self.over = threading.Event()
            self.answers = order
            self.met, self.done, self.commands = {}, {}, []
            if "accept" in order["faults"]:
                self.drop(self.peers)
        if "port" in order:
            if self.listener:
                self.drop([self.listener, *self.peers])
                self.listener.close()
            self.listener = socket.create_server(("127.0.0.1", order["port"])) if order["port"] is not None else None
            if self.listener:
                self.accept(self.listener, self.serve)
        return {"port": self.listener and self.listener.getsockname()[1], "met": self.met, "done": self.done,
                "commands": self.commands, "strayed": self.strayed}

    @staticmethod
    def drop(sockets):
        for known in list(sockets):
            with contextlib.suppress(OSError):
                known.shutdown(socket.SHUT_RDWR)

    @staticmethod
    def accept(listener, serve):
        def run():
            with contextlib.suppress(OSError):
                while True:
                    threading.Thread(target=serve_and_close, args=[listener.accept()[0]], daemon=True).start()

        def serve_and_close(peer):
            with contextlib.suppress(OSError), peer:  # the client may have had enough
                serve(peer)
        threading.Thread(target=run, daemon=True).start()

    def serve(self, peer):
        self.peers.add(peer)
        try:
            if at_accept := self.answers["faults"].get("accept"):
                self.misbehave(peer, "accept", at_accept)
                return
            with peer.makefile("rb") as stream:
                while self.answer(peer, stream):
                    pass
        finally:
            self.peers.discard(peer)

    def answer(self, peer, stream):
        """Whether another request may come."""
        request = stream.readline().decode().split()
        size = 0
        while (line := stream.readline().strip().lower()):
            if line.startswith(b"content-length:"):
                size = int(line.split(b":")[1])
        stream.read(size)
        if not request:
            return False
        method, path, _ = request
        if method != "GET":
            self.commands.append(path)
            peer.sendall(whole(b"{}"))
            return True
        if fault := self.answers["faults"].get(path):
            return self.misbehave(peer, path, fault)
        peer.sendall(whole(self.answers["good"][path].encode()))
        return True

    def misbehave(self, peer, path, name):
        self.met[path] = self.met.get(path, 0) + 1
        try:
            return ALL[name][1](peer, self.answers["bad"].get(path, "").encode(), self)
        finally:
            self.done[path] = self.done.get(path, 0) + 1


if __name__ == "__main__":
    server = Server()
    for text in sys.stdin:
        print(json.dumps(server.obey(json.loads(text))), flush=True)

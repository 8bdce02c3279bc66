#!/usr/bin/python3
"""A service that misbehaves to order, byte by byte: a process of its own, so that a flood costs its tester nothing.

Takes one JSON object a line: {"good": {path: text}, "bad": {path: text}, "faults": {path: name}} replaces what is
answered and lets go of every connection that an earlier fault holds; the path "accept" stands for every connection,
before its first request. After each it tells {"port": number, "met": [path...], "commands": count}: whose fault has run
its course and how many commands came since the answers were replaced.
"""
import contextlib
import http.server
import json
import os
import socket
import struct
import sys
import threading
import time
from typing import Callable, NamedTuple

LIMIT = 8 << 20  # what the client takes of a body


def head(*fields):
    return "\r\n".join(["HTTP/1.1 200 OK", *fields, "\r\n"]).encode()


def whole(body):
    return head(f"Content-Length: {len(body)}") + body


def chunked(*pieces):
    return head("Transfer-Encoding: chunked") + b"".join(b"%x\r\n%s\r\n" % (len(p), p) for p in (*pieces, b""))


def longer(count, record):
    """The reply with its list, or that of its peers, grown to that many records."""
    def make(body):
        value = json.loads(body)
        (value if isinstance(value, list) else value["peers"]).extend(map(record, range(1, count)))
        return whole(json.dumps(value).encode())
    return make


def peer_or_device(number):
    return {"device_id": f"{number:x}", "name": "Peer"}


# What comes after a fault's first bytes


def end(peer, _over):
    peer.shutdown(socket.SHUT_WR)
    peer.settimeout(2)
    while peer.recv(1 << 16):
        pass


def reset(peer, _over):
    time.sleep(0.05)  # for the client to read what came before
    peer.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
    os.close(peer.detach())


def hold(_peer, over):
    over.wait()


def flood(piece):
    """At full speed, until the client has had enough or has taken twice its limit."""
    def send(peer, _over):
        for _ in range(2 * LIMIT // len(piece)):
            peer.sendall(piece)
    return send


class Fault(NamedTuple):
    is_taken: bool  # whether the value in the reply becomes the shown one, or else the one before is kept
    says: Callable[[bytes], bytes]  # with the body that it should have said
    then: Callable = end


FAULTS = {
    "end in the body": Fault(False, lambda b: whole(b)[:-9]),
    "reset in the body": Fault(False, lambda b: whole(b)[:-9], reset),
    "chunks of a byte": Fault(True, lambda b: chunked(*(bytes([c]) for c in b))),
    "body over the limit": Fault(False, lambda b: whole(b + b" " * LIMIT)),
    "body endless": Fault(False, lambda b: head(), flood(b"[" + b"1," * 50_000)),
    "chunks endless": Fault(False, lambda b: chunked()[:-5], flood(b"1000\r\n%4096s\r\n" % b"")),
    "never answered": Fault(False, lambda b: b"", hold),
    "half a head": Fault(False, lambda b: whole(b)[:20], hold),
    "half a body": Fault(False, lambda b: whole(b)[:-9], hold),
    "10,000 in a list": Fault(True, longer(10_000, peer_or_device)),
    "400,000 entries": Fault(True, longer(400_000, lambda number: {"id": number})),
    "reset": Fault(False, lambda b: b"", reset),
}


class Orders:
    """What is to be answered, and what came of it."""

    def __init__(self, good=None, bad=None, faults=None):
        self.good, self.bad, self.faults = good, bad or {}, faults or {}
        self.over, self.met, self.commands = threading.Event(), set(), 0


class Connection(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    orders, peers = Orders(), set()

    def handle(self):
        self.peers.add(self.connection)
        with contextlib.suppress(OSError):  # the client may have had enough
            if "accept" in self.orders.faults:
                self.misbehave("accept")
            else:
                super().handle()
        self.peers.discard(self.connection)

    def do_GET(self):
        if self.path in self.orders.faults:
            self.close_connection = True
            self.misbehave(self.path)
        else:
            self.wfile.write(whole(self.orders.good[self.path].encode()))

    def do_POST(self):
        self.orders.commands += 1
        self.wfile.write(whole(b"{}"))

    def misbehave(self, path):
        orders, peer = self.orders, self.connection
        fault = FAULTS[orders.faults[path]]
        try:
            peer.sendall(fault.says(orders.bad.get(path, "").encode()))
            if fault.then is hold:
                orders.met.add(path)
            fault.then(peer, orders.over)
        finally:
            orders.met.add(path)

    def log_message(self, *_):
        pass

    @classmethod
    def obey(cls, orders):
        cls.orders.over.set()
        cls.orders = orders
        for peer in list(cls.peers) if "accept" in orders.faults else []:
            with contextlib.suppress(OSError):
                peer.shutdown(socket.SHUT_RDWR)


if __name__ == "__main__":
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Connection)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    for line in sys.stdin:
        if order := json.loads(line):
            Connection.obey(Orders(**order))
        print(json.dumps({"port": server.server_port, "met": [*Connection.orders.met],
                          "commands": Connection.orders.commands}), flush=True)

#!/usr/bin/python3
"""The real executable learns of a new release and fetches it from a real HTTPS server.

Runs as root in a network and a mount namespace of its own, where the manifest's host is this computer and its
certificate is trusted: unshare --net --mount with_desktop.py test_update.py.
"""
import fcntl
import http.server
import json
import os
import socket
import ssl
import struct
import subprocess
import threading
import unittest
from pathlib import Path

from desktop import HOME, Application, Sim, XembedTray, node, press, tray_icons, wait_for

HOST = "updates.quorbit.example"
PACKAGE = os.urandom(1) * 3_000_000
MANIFEST = {"version": "9.5.0", "download": {"macos": f"https://{HOST}/pkg/quorbit-9.5.0.deb"},
            "notes": {"en": "Faster reconnects, a calmer layout editor, and fixes."}}


def be_the_internet():
    """Names this computer HOST, gives it a certificate and trusts that."""
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as control:
        set_flags, up_and_running = 0x8914, 0x41
        fcntl.ioctl(control, set_flags, struct.pack("16sh14x", b"lo", up_and_running))
    folder = HOME / "certificates"
    folder.mkdir()
    authority, key, request, certificate = (folder / name for name in ("ca.pem", "key", "request", "server"))
    names = folder / "names"
    names.write_text(f"subjectAltName=DNS:{HOST}\n")

    def openssl(*arguments):
        subprocess.run(["openssl", *map(str, arguments)], check=True, capture_output=True)

    openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", "/CN=Test authority", "-days", 2,
            "-keyout", folder / "ca.key", "-out", authority)
    openssl("req", "-newkey", "rsa:2048", "-nodes", "-subj", f"/CN={HOST}", "-keyout", key, "-out", request)
    openssl("x509", "-req", "-in", request, "-CA", authority, "-CAkey", folder / "ca.key", "-CAcreateserial",
            "-days", 2, "-extfile", names, "-out", certificate)
    openssl("rehash", folder)
    hosts = HOME / "hosts"
    hosts.write_text(f"127.0.0.1 localhost {HOST}\n")
    for source, target in ((hosts, "/etc/hosts"), (folder, "/etc/ssl/certs")):
        subprocess.run(["mount", "--bind", source, target], check=True)
    return certificate, key


class Releases(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        body = {"/version.json": json.dumps(MANIFEST).encode(), "/pkg/quorbit-9.5.0.deb": PACKAGE}.get(self.path)
        self.send_response(200 if body else 404)
        self.send_header("Content-Length", str(len(body or b"")))
        self.end_headers()
        self.wfile.write(body or b"")

    def log_message(self, *_):
        pass


class Update(unittest.TestCase):
    def test_the_badge_appears_and_the_package_arrives(self):
        certificate, key = be_the_internet()
        server = http.server.ThreadingHTTPServer(("127.0.0.1", 443), Releases)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate, key)
        server.socket = context.wrap_socket(server.socket, server_side=True)
        threading.Thread(target=server.serve_forever, daemon=True).start()

        with XembedTray(), Sim("still"), Application() as application:
            wait_for("the icon", tray_icons)
            with Application() as again:
                again.process.wait(5)
            press(wait_for("the badge", lambda: node(application.pid, "push button", "Quorbit 9.5.0 is available")))
            press(wait_for("the About tab", lambda: node(application.pid, "page tab", "About")))
            press(wait_for("the download button", lambda: node(application.pid, "push button", "Download")))
            package = HOME / "Downloads" / "quorbit-9.5.0.deb"
            wait_for("the package", package.exists)
            self.assertEqual(package.read_bytes(), PACKAGE)
            self.assertEqual([path.name for path in package.parent.iterdir()], [package.name])
        server.shutdown()
        server.server_close()


if __name__ == "__main__":
    unittest.main()

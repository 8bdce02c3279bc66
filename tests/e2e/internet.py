"""The update server, for programs in a network of their own: alone."""
import fcntl
import http.server
import socket
import ssl
import struct
import subprocess
import threading

from desktop import HOME

HOST = "updates.quorbit.example"


def switch_on():
    """Lets programs reach this computer."""
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as control:
        set_flags, up_and_running = 0x8914, 0x41
        fcntl.ioctl(control, set_flags, struct.pack("16sh14x", b"lo", up_and_running))


def never_answer_for_names():
    """Lets the look-up of a name take as long as the C library waits, while the socket that is given back is open."""
    switch_on()
    silent = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    silent.bind(("127.0.0.1", 53))
    file = HOME / "resolv.conf"
    file.write_text("nameserver 127.0.0.1\n")
    subprocess.run(["mount", "--bind", file, "/etc/resolv.conf"], check=True)
    return silent


def be_the_internet(*names):
    """Names this computer HOST, and gives back a certificate for that name and the others, which is trusted, and its
    key."""
    switch_on()
    folder = HOME / "certificates"
    folder.mkdir()
    authority, key, certificate = (folder / name for name in ("ca.pem", "key", "server"))

    def make(name, file, *options):
        subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-subj", f"/CN={name}", "-out",
                        file, *options], check=True, capture_output=True)
    make("Test authority", authority, "-keyout", folder / "ca.key")
    make(HOST, certificate, "-keyout", key, "-CA", authority, "-CAkey", folder / "ca.key",
         "-addext", "subjectAltName=" + ",".join("DNS:" + name for name in (HOST, *names)))
    subprocess.run(["openssl", "rehash", folder], check=True, capture_output=True)
    hosts = HOME / "hosts"
    hosts.write_text(f"127.0.0.1 localhost {HOST}\n")
    for source, target in ((hosts, "/etc/hosts"), (folder, "/etc/ssl/certs")):
        subprocess.run(["mount", "--bind", source, target], check=True)
    return certificate, key


class Server(http.server.ThreadingHTTPServer):
    """Keeps the head of every request; `answer` makes a status, headers and a body from a path, or hangs up."""

    daemon_threads = True
    request_queue_size = 64

    def __init__(self, address, answer=None, certificate=None):
        super().__init__(address, Handler)
        self.heads, self.connections, self.refusals, self.answer = [], 0, 0, answer
        if certificate:
            context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            context.load_cert_chain(*certificate)
            self.socket = context.wrap_socket(self.socket, server_side=True)
        self.port = self.server_address[1]
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def get_request(self):
        try:
            return super().get_request()
        except ssl.SSLError:
            self.refusals += 1
            raise

    def handle_error(self, *_):
        pass

    def verify_request(self, *_):
        self.connections += 1
        return True


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"

    def do_GET(self):
        self.rfile.read(int(self.headers.get("Content-Length", 0)))
        self.server.heads.append((self.command, self.path, self.headers))
        answer = self.server.answer and self.server.answer(self.path)
        self.close_connection = answer is None
        if answer is None:
            return
        status, headers, body = answer
        self.send_response(status)
        for name, value in [*headers, ("Content-Length", str(len(body)))]:
            self.send_header(name, value)
        self.end_headers()
        self.wfile.write(body)

    do_POST = do_PUT = do_DELETE = do_GET

    def log_message(self, *_):
        pass

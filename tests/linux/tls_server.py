"""An https server on the loopback interface for the tests of downloads.

    tls_server.py FOLDER CERTIFICATE

Writes its certificates to FOLDER; “ca.pem” there is the authority of all but the self-signed one.
CERTIFICATE is "valid", "expired", "wrong-host" or "self-signed". Writes two ports to descriptor 3 once
it accepts connections: its own and that of a proxy, which connects every request to this server.
Runs until it is killed.
"""

import gzip
import json
import os
import socket
import ssl
import subprocess
import sys
import threading
import urllib.parse


def openssl(folder, *arguments):
    subprocess.run(["openssl", *arguments], cwd=folder, check=True, stdin=subprocess.DEVNULL,
                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def make_certificate(folder, kind):
    """Leaves server.pem, server.key and ca.pem in the folder."""
    new_key = ("-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1", "-nodes")
    host = "elsewhere.example" if kind == "wrong-host" else "localhost"
    of_server = ("-keyout", "server.key", "-subj", f"/CN={host}",
                 "-addext", f"subjectAltName=DNS:{host}")
    openssl(folder, "req", "-x509", *new_key, "-keyout", "ca.key", "-out", "ca.pem",
            "-subj", "/CN=Authority of a test")
    if kind == "self-signed":
        openssl(folder, "req", "-x509", *new_key, *of_server, "-out", "server.pem")
        return
    openssl(folder, "req", *new_key, *of_server, "-out", "server.csr")
    openssl(folder, "x509", "-req", "-in", "server.csr", "-CA", "ca.pem", "-CAkey", "ca.key",
            "-CAcreateserial", "-days", "-1" if kind == "expired" else "1",
            "-copy_extensions", "copy", "-out", "server.pem")


class Exchange:
    """One request and its reply."""

    def __init__(self, connection):
        self.connection = connection
        self.head = b""
        while b"\r\n\r\n" not in self.head:
            received = connection.recv(65536)
            if not received:
                raise ConnectionError
            self.head += received
        target = self.head.split()[1].decode("ascii")
        self.path, _, self.query = target.partition("?")

    def send(self, data):
        self.connection.sendall(data)

    def start(self, status, *headers):
        lines = [f"HTTP/1.1 {status}", "Connection: close", *headers]
        self.send("".join(line + "\r\n" for line in lines).encode() + b"\r\n")

    def reply(self, status, body, *headers):
        self.start(status, f"Content-Length: {len(body)}", *headers)
        self.send(body)

    def send_endlessly(self):
        while True:
            self.send(bytes(65536))

    def wait_for_the_client(self):
        """Says nothing until the client gives up."""
        while self.connection.recv(65536):
            pass

    def answer(self):
        """Calls the method that the first part of the path names."""
        name = self.path.split("/")[1].replace("-", "_")
        getattr(self, f"answer_{name}", self.answer_unknown)()

    def answer_unknown(self):
        self.reply("404 Not Found", b"no such page")

    def answer_text(self):
        self.reply("200 OK", b"some text")

    def answer_pack(self):
        """A pack whose name is the query."""
        self.reply("200 OK", json.dumps({"name": self.query, "categories": []}).encode())

    def answer_request(self):
        """The request itself."""
        self.reply("200 OK", self.head, "Set-Cookie: name=value")

    def answer_error(self):
        self.reply("500 Internal Server Error", b"")

    def answer_empty(self):
        self.start("204 No Content")

    def answer_size(self):
        self.reply("200 OK", b"x" * int(self.query))

    def answer_chunked(self):
        self.start("200 OK", "Transfer-Encoding: chunked")
        self.send(b"5\r\nsome \r\n4\r\ntext\r\n0\r\n\r\n")

    def answer_endless(self):
        self.start("200 OK")
        self.send_endlessly()

    def answer_endless_head(self):
        self.send(b"HTTP/1.1 200 OK\r\n")
        while True:
            self.send(b"X-Filler: " + b"x" * 60000 + b"\r\n")

    def answer_bomb(self):
        """64 MiB, compressed."""
        self.reply("200 OK", gzip.compress(bytes(64 << 20), 9), "Content-Encoding: gzip")

    def answer_broken_gzip(self):
        self.reply("200 OK", b"not compressed at all", "Content-Encoding: gzip")

    def redirect(self, location, *, body=b""):
        self.reply("302 Found", body, "Set-Cookie: name=value", f"Location: {location}")

    def answer_redirect(self):
        """Redirects as often as the query says, then answers with the request."""
        count = int(self.query)
        self.redirect(f"/redirect?{count - 1}" if count > 1 else "/request")

    def answer_loop(self):
        self.redirect("/loop")

    def answer_redirect_to(self):
        self.redirect(urllib.parse.unquote(self.query))

    def answer_endless_redirect(self):
        # A client reads this body to its end if the connection is to stay open.
        self.send(b"HTTP/1.1 302 Found\r\nLocation: /text\r\nContent-Length: 1000000000000\r\n\r\n")
        self.send_endlessly()

    def answer_cut(self):
        self.start("200 OK", "Content-Length: 1000")
        self.send(b"some text")

    def answer_cut_chunks(self):
        self.start("200 OK", "Transfer-Encoding: chunked")
        self.send(b"5\r\nsome \r\n")

    def answer_bad_chunks(self):
        self.start("200 OK", "Transfer-Encoding: chunked")
        self.send(b"no number\r\nsome text\r\n")

    def answer_nothing(self):
        pass

    def answer_no_http(self):
        self.send(b"This is another protocol.\r\n")

    def answer_stalled(self):
        self.wait_for_the_client()

    def answer_stalled_body(self):
        self.start("200 OK", "Content-Length: 1000")
        self.send(b"some text")
        self.wait_for_the_client()


def serve(connection, context):
    with connection:
        try:
            with context.wrap_socket(connection, server_side=True) as secure:
                Exchange(secure).answer()
                # Without this the client could not tell the end from a broken connection.
                secure.unwrap()
        except OSError:
            pass  # the client has closed the connection


def copy(source, destination):
    while data := source.recv(65536):
        destination.sendall(data)
    destination.shutdown(socket.SHUT_WR)


def tunnel(client, port):
    """Answers CONNECT with a connection to the port of this host."""
    with client, socket.create_connection(("127.0.0.1", port)) as server:
        try:
            head = b""
            while b"\r\n\r\n" not in head:
                head += client.recv(1)
            client.sendall(b"HTTP/1.1 200 Connected\r\n\r\n")
            back = threading.Thread(target=copy, args=(server, client), daemon=True)
            back.start()
            copy(client, server)
            back.join()
        except OSError:
            pass


def listen(handle, argument):
    """Calls handle(connection, argument) on a thread for each connection. Returns the port."""
    listener = socket.create_server(("127.0.0.1", 0))

    def accept():
        while True:
            connection, _ = listener.accept()
            threading.Thread(target=handle, args=(connection, argument), daemon=True).start()
    threading.Thread(target=accept, daemon=True).start()
    return listener.getsockname()[1]


def main(folder, kind):
    make_certificate(folder, kind)
    context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
    context.load_cert_chain(f"{folder}/server.pem", f"{folder}/server.key")
    port = listen(serve, context)
    proxy = listen(tunnel, port)
    os.write(3, f"{port} {proxy}\n".encode())
    os.close(3)
    threading.Event().wait()


main(*sys.argv[1:])

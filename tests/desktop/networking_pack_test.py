"""The pack for the network. Routers, the Internet and wireless networks are played by programs of
the test; addresses, names, ports and web sites are real, on this computer."""

import http.server
import pathlib
import re
import socket
import threading
import unittest

from pack_test_case import AWKWARD, PackTestCase
from quillmar_desktop import run


class NetworkingPackTest(PackTestCase):

    def setUp(self):
        super().setUp()
        self.have_pack("networking")

    def missing(self, tool, package):
        return f"This needs the program {tool}; it comes with the package {package}."

    def listen(self):
        """A port of this process that takes connections."""
        listener = socket.create_server(("127.0.0.1", 0))
        self.addCleanup(listener.close)
        return listener, listener.getsockname()[1]

    def serve(self):
        """A web server of this process; answers its address."""
        class Handler(http.server.BaseHTTPRequestHandler):
            def do_GET(self):
                self.send_response(200 if self.path == "/it's?a=1&b=2" else 404)
                self.end_headers()

            def log_message(self, *_):
                pass

        server = http.server.HTTPServer(("127.0.0.1", 0), Handler)
        thread = threading.Thread(target=server.serve_forever)
        thread.start()
        self.addCleanup(thread.join)
        self.addCleanup(server.server_close)
        self.addCleanup(server.shutdown)
        return f"http://127.0.0.1:{server.server_port}"

    def test_every_item_does_what_its_title_says(self):
        self.tells_addresses()
        self.reaches_hosts()
        self.tells_connections()
        self.tells_wireless_networks()
        self.assert_all_were_tried()

    def tells_addresses(self):
        title = "Copy my local address"
        self.assertIn(f" {self.succeed(title)}/", run("ip", "address"))
        self.fails(title, self.missing("ip", "iproute2"), environment=self.path_without("ip"))

        title = "Copy my public address"
        self.tool("curl", "echo \"$@\" >&2; echo 203.0.113.9")
        self.assertEqual(self.succeed(title), "203.0.113.9")
        self.tool("curl", "echo 'curl: (6) Could not resolve host' >&2; exit 6")
        self.fails(title, "The Internet does not answer: https://icanhazip.com could not be asked.")
        self.fails(title, self.missing("curl", "curl"), environment=self.path_without("curl"))
        (self.tools / "curl").unlink()

        self.assertEqual(self.succeed("Find the name of an address…", "127.0.0.1"), "localhost")
        self.fails("Find the name of an address…", "No name was found for “256.1.1.1”.", "256.1.1.1")

    def have_router(self, address):
        self.tool("ip", f"echo 'default via {address} dev lo proto dhcp src 127.0.0.1'")

    def reaches_hosts(self):
        answers = r"3 of 3 answers, [\d.]+ ms each"
        self.have_router("127.0.0.1")
        self.tool("resolvectl", """echo 'Global: 192.0.2.53
Link 2 (eth0): 192.0.2.54 192.0.2.55
Link 3 (eth1):'""")
        self.assertEqual(self.succeed("Router and name servers"),
                         "Router 127.0.0.1\nName server 192.0.2.53\n"
                         "Name server 192.0.2.54 192.0.2.55")
        self.tool("resolvectl", "exit 1")
        servers = re.findall(r"(?m)^nameserver (\S+)", pathlib.Path("/etc/resolv.conf").read_text())
        self.assertEqual(self.succeed("Router and name servers").splitlines(),
                         ["Router 127.0.0.1"] + [f"Name server {server}" for server in servers])

        self.matches("Does the router answer?", answers)
        self.have_router("256.1.1.1")
        self.fails("Does the router answer?", "There is no answer from 256.1.1.1.")
        self.tool("ip", "true")
        for title in ("Does the router answer?", "Router and name servers"):
            self.fails(title, "This computer has no way out of its own network now.")
        (self.tools / "ip").unlink()

        self.matches("Ping a host…", answers, text="localhost")
        for host in ("no host", "-f", AWKWARD):
            self.fails("Ping a host…", f"There is no answer from {host}.", host)
        for title, text in (("Does the router answer?", None), ("Ping a host…", "localhost")):
            self.fails(title, self.missing("ping", "iputils-ping"), text, self.path_without("ping"))

        title = "Check a web site…"
        site = self.serve()
        self.matches(title, r"Status 200 after [\d.]+ s", text=f"{site}/it's?a=1&b=2")
        self.matches(title, r"Status 404 after [\d.]+ s", text=f"{site}/other")
        listener, port = self.listen()
        listener.close()
        self.fails(title, f"There is no answer from 127.0.0.1:{port}.", f"127.0.0.1:{port}")
        self.fails(title, self.missing("curl", "curl"), site, self.path_without("curl"))

    def tells_connections(self):
        listener, port = self.listen()
        self.assertRegex(self.succeed("What listens here?"), rf"(?m)^127\.0\.0\.1:{port} python3$")
        with socket.create_connection(("127.0.0.1", port)), listener.accept()[0]:
            self.assertRegex(self.succeed("Who is connected?"), r"(?m)^\d+ with 127\.0\.0\.1$")
        self.tool("ss", "true")
        self.assertEqual(self.succeed("Who is connected?"), "Nobody.")
        for title in ("What listens here?", "Who is connected?"):
            self.fails(title, self.missing("ss", "iproute2"), environment=self.path_without("ss"))

    def tells_wireless_networks(self):
        title = "Wi-Fi networks nearby"
        self.tool("nmcli", "printf '80:Home: sweet\\n62:Home: sweet\\n40:\\n37:Café\\n'")
        self.assertEqual(self.succeed(title), "80% Home: sweet\n37% Café")
        self.tool("nmcli", "exit 10")
        self.assertEqual(self.succeed(title), "There is none in reach.")
        self.fails(title, self.missing("nmcli", "network-manager"),
                   environment=self.path_without("nmcli"))


if __name__ == "__main__":
    unittest.main()

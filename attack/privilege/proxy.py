"""proxy.py PORT FOLDER: a person's own HTTP proxy, which answers every request itself, encrypted ones too, with the file
of that name in FOLDER (as it stands, from the status line on). FOLDER also has the certificate, web.pem."""

import os
import socketserver
import ssl
import sys

port, folder = int(sys.argv[1]), sys.argv[2]
tls = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
tls.load_cert_chain(folder + "/web.pem")


def take_request(stream):
    words = stream.readline().split() + [b"", b"/"]
    length = 0
    while line := stream.readline().strip():
        if line.lower().startswith(b"content-length:"):
            length = int(line.split(b":")[1])
    stream.read(length)
    return words[0], words[1].decode()


class Proxy(socketserver.StreamRequestHandler):
    def handle(self):
        method, target = take_request(self.rfile)
        answer = self.request
        if method == b"CONNECT":
            answer.sendall(b"HTTP/1.1 200 OK\r\n\r\n")
            answer = tls.wrap_socket(answer, server_side=True)
            method, target = take_request(answer.makefile("rb"))
        file = folder + "/" + os.path.basename(target)
        if os.path.isfile(file):
            with open(file, "rb") as content:
                answer.sendall(content.read())
        else:
            answer.sendall(b"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n")
        answer.close()


class Server(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True


Server(("127.0.0.1", port), Proxy).serve_forever()

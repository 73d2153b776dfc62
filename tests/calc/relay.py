"""Hands on what is sent to a port of this machine and what comes back, and keeps what was sent."""

import socket
import threading


class Relay:
    def __init__(self, port):
        self.target = ("127.0.0.1", int(port))
        self.sent = []  # by each connection, in the order in which they came
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]

    def __enter__(self):
        threading.Thread(target=self._accept, daemon=True).start()
        return self

    def __exit__(self, *_):
        self.listener.close()

    def _accept(self):
        while True:
            try:
                client, _ = self.listener.accept()
            except OSError:  # it is over
                return
            server = socket.create_connection(self.target)
            kept = bytearray()
            self.sent.append(kept)
            threading.Thread(target=self._hand_on, args=(client, server, kept), daemon=True).start()
            threading.Thread(target=self._hand_on, args=(server, client, bytearray()), daemon=True).start()

    def _hand_on(self, source, target, kept):
        with source:
            try:
                while part := source.recv(65536):
                    kept += part
                    target.sendall(part)
                target.shutdown(socket.SHUT_WR)
            except OSError:  # one of them is gone
                pass

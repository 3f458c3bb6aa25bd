#!/usr/bin/env python3
"""A pointer for a wlroots compositor that has none (a headless sway): a virtual pointer
(zwlr_virtual_pointer_manager_v1) driven by lines on standard input, so that clients see a real
pointer: motion, enter, buttons. It stays on the seat until standard input ends.

    move X Y        moves to X Y (output pixels)
    press BUTTON    left, right or middle
    release BUTTON
    click BUTTON    press and release

Every line is answered with "ok" once the compositor has handled it. Only the Python standard
library: it speaks the Wayland wire format itself.
"""
import os
import socket
import struct
import sys
import time

BUTTONS = {"left": 0x110, "right": 0x111, "middle": 0x112}


class Connection:
    def __init__(self):
        path = os.path.join(os.environ["XDG_RUNTIME_DIR"], os.environ.get("WAYLAND_DISPLAY", "wayland-0"))
        self.sock = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.sock.connect(path)
        self.next_id = 2
        self.buffer = b""

    def new_id(self):
        object_id = self.next_id
        self.next_id += 1
        return object_id

    def send(self, object_id, opcode, payload=b""):
        size = 8 + len(payload)
        self.sock.sendall(struct.pack("<II", object_id, (size << 16) | opcode) + payload)

    def events(self):
        """Reads at least one event; yields (object, opcode, payload)."""
        while True:
            while len(self.buffer) >= 8:
                object_id, word = struct.unpack_from("<II", self.buffer)
                size = word >> 16
                if len(self.buffer) < size:
                    break
                payload = self.buffer[8:size]
                self.buffer = self.buffer[size:]
                yield object_id, word & 0xFFFF, payload
            data = self.sock.recv(65536)
            if not data:
                raise SystemExit("the compositor closed the connection")
            self.buffer += data

    def roundtrip(self, on_event=None):
        callback = self.new_id()
        self.send(1, 0, struct.pack("<I", callback))  # wl_display.sync
        for object_id, opcode, payload in self.events():
            if object_id == callback:
                return
            if object_id == 1 and opcode == 0:  # wl_display.error
                raise SystemExit("protocol error: %r" % payload)
            if on_event:
                on_event(object_id, opcode, payload)


def string(value):
    data = value.encode() + b"\0"
    return struct.pack("<I", len(data)) + data + b"\0" * (-len(data) % 4)


def main():
    wayland = Connection()
    registry = wayland.new_id()
    wayland.send(1, 1, struct.pack("<I", registry))  # wl_display.get_registry
    globals_ = {}

    def on_event(object_id, opcode, payload):
        if object_id == registry and opcode == 0:  # wl_registry.global
            name, length = struct.unpack_from("<II", payload)
            interface = payload[8:8 + length - 1].decode()
            version = struct.unpack_from("<I", payload, 8 + length + (-length % 4))[0]
            globals_[interface] = (name, version)

    wayland.roundtrip(on_event)
    wayland.roundtrip(on_event)
    if "zwlr_virtual_pointer_manager_v1" not in globals_ or "wl_output" not in globals_:
        raise SystemExit("the compositor offers no virtual pointer")
    name, _ = globals_["zwlr_virtual_pointer_manager_v1"]
    manager = wayland.new_id()
    wayland.send(registry, 0, struct.pack("<I", name) + string("zwlr_virtual_pointer_manager_v1")
                 + struct.pack("<II", 1, manager))
    pointer = wayland.new_id()
    wayland.send(manager, 0, struct.pack("<II", 0, pointer))  # create_virtual_pointer(seat: default)
    wayland.roundtrip()

    extent = tuple(int(value) for value in os.environ.get("POINTER_EXTENT", "1280x800").split("x"))
    start = time.monotonic()

    def now():
        return int((time.monotonic() - start) * 1000) & 0xFFFFFFFF

    def frame():
        wayland.send(pointer, 4)

    def button(which, state):
        wayland.send(pointer, 2, struct.pack("<III", now(), BUTTONS[which], state))
        frame()

    for line in sys.stdin:
        words = line.split()
        if not words:
            continue
        if words[0] == "move":
            x, y = int(words[1]), int(words[2])
            wayland.send(pointer, 1, struct.pack("<IIIII", now(), x, y, extent[0], extent[1]))  # motion_absolute
            frame()
        elif words[0] in ("press", "release"):
            button(words[1], 1 if words[0] == "press" else 0)
        elif words[0] == "click":
            button(words[1], 1)
            wayland.roundtrip()
            button(words[1], 0)
        else:
            print("unknown command: " + line.strip(), flush=True)
            continue
        wayland.roundtrip()
        print("ok", flush=True)
    wayland.send(pointer, 8)  # destroy
    wayland.roundtrip()


if __name__ == "__main__":
    main()

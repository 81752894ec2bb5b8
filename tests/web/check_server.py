#!/usr/bin/env python3
"""Asks "quillbrook web" for what it gives and for what it must not: check_server.py QUILLBROOK

A folder with a page is served at a free port; requests are written byte by byte, as no library would write them.
"""
import os
import pathlib
import re
import socket
import subprocess
import sys
import tempfile

PAGE = b"<!DOCTYPE html><title>A page</title>"


def ask(port, line, *headers, host=None):
    with socket.create_connection(("127.0.0.1", port), timeout=10) as link:
        lines = [line, "Host: " + (host or f"127.0.0.1:{port}"), "Connection: close", *headers, "", ""]
        link.sendall("\r\n".join(lines).encode("latin-1"))
        answer = b""
        while piece := link.recv(65536):
            answer += piece
    head, _, body = answer.partition(b"\r\n\r\n")
    status = re.match(rb"HTTP/1\.1 (\d+)", head)
    return (int(status.group(1)) if status else 0), head.decode("latin-1"), body


def make_folder(folder):
    page = folder / "page"
    (page / "js").mkdir(parents=True)
    (page / "index.html").write_bytes(PAGE)
    (page / "js/main.js").write_text("let film;", encoding="utf-8")
    (page / "work.wasm").write_bytes(b"\0asm")
    (folder / "secret.txt").write_text("secret", encoding="utf-8")
    os.symlink(folder / "secret.txt", page / "link.txt")
    os.symlink(folder, page / "out")
    return page


def wrong_of_answers(port):
    wrong = []

    def expect(what, wanted, line, *headers, **more):
        status, head, body = ask(port, line, *headers, **more)
        if status not in wanted:
            wrong.append(f"{what}: {status}")
        if b"secret" in body:
            wrong.append(f"{what}: gives what lies outside")
        return head, body

    for path in ("/", "/index.html"):
        if expect(path, [200], f"GET {path} HTTP/1.1")[1] != PAGE:
            wrong.append(f"{path}: isn't the page")
    head, _ = expect("a module", [200], "GET /work.wasm HTTP/1.1")
    if "Content-Type: application/wasm" not in head:
        wrong.append("a module isn't told as one")
    mark = re.search(r"ETag: (\S+)", head).group(1)
    expect("what the browser has", [304], "GET /work.wasm HTTP/1.1", "If-None-Match: " + mark)
    if expect("a head", [200], "HEAD /js/main.js HTTP/1.1")[1]:
        wrong.append("a head has a body")
    for path in ("/../secret.txt", "/js/../../secret.txt", "/%2e%2e/secret.txt", "/..%2fsecret.txt", "/js/%2e%2e%2f%2e%2e%2fsecret.txt", "//secret.txt",
                 "/link.txt", "/out/secret.txt", "/js", "/js/", "/etc/passwd", "/index.html%00.js", "/..\\secret.txt", "/./../secret.txt"):
        expect(path, [400, 404], f"GET {path} HTTP/1.1")
    for method in ("POST", "PUT", "DELETE", "OPTIONS", "PATCH"):
        expect(method, [400, 405], f"{method} /index.html HTTP/1.1", "Content-Length: 0")
    expect("another name of this machine", [403], "GET / HTTP/1.1", host=f"elsewhere.example:{port}")
    expect("its local name", [200], "GET / HTTP/1.1", host=f"localhost:{port}")
    return wrong


def listens_elsewhere(port):
    """On an address of the machine that isn't the loopback one."""
    for address in ("127.0.0.2", socket.gethostname()):
        try:
            socket.create_connection((address, port), timeout=2).close()
            if address == "127.0.0.2" or not socket.gethostbyname(address).startswith("127."):
                return [f"listens at {address} too"]
        except OSError:
            pass
    return []


def wrong_of_refusals(quillbrook, folder, port):
    wrong = []
    for arguments, words in ((["--folder", str(folder)], "holds no page"), (["--folder", str(folder / "page"), "--port", str(port)], "is taken")):
        done = subprocess.run([quillbrook, "web", *arguments], capture_output=True, text=True, timeout=20, check=False)
        if done.returncode != 1 or words not in done.stderr:
            wrong.append(f"{' '.join(arguments)}: {done.returncode}, {done.stderr.strip()}")
    return wrong


def main():
    quillbrook = sys.argv[1]
    with tempfile.TemporaryDirectory(prefix="served-") as name:
        folder = pathlib.Path(name)
        page = make_folder(folder)
        with subprocess.Popen([quillbrook, "web", "--port", "0", "--folder", str(page)], stdout=subprocess.PIPE, text=True) as server:
            try:
                line = server.stdout.readline()
                port = int(re.match(r"http://127\.0\.0\.1:(\d+)/ is the page", line).group(1))
                wrong = wrong_of_answers(port) + listens_elsewhere(port) + wrong_of_refusals(quillbrook, folder, port)
                if server.poll() is not None:
                    wrong.append("the server is gone")
            finally:
                server.terminate()
    for line in wrong:
        print("server: " + line)
    if not wrong:
        print("server: gives the page to this machine, and nothing else")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Every line that the tool prints with --json fits the schema, and each kind of line is seen:
schema.py SCHEMA TOOL FOLDER"""
import concurrent.futures
import json
import os
import shutil
import struct
import subprocess
import sys
import tty

try:
    import jsonschema
except ImportError:
    print("python3-jsonschema is not installed")
    sys.exit(77)

schema_file, tool, folder = sys.argv[1:]
os.makedirs(folder, exist_ok=True)
with open(schema_file, encoding="utf-8") as file:
    schema = json.load(file)
jsonschema.Draft7Validator.check_schema(schema)
# By kind: a line that fits none is told by what is wrong with its own kind.
validators = {
    name: jsonschema.Draft7Validator({"$ref": "#/definitions/" + name, "definitions": schema["definitions"]})
    for name in (reference["$ref"].rsplit("/", 1)[1] for reference in schema["oneOf"])
}
seen = set()


def take(output):
    for text in output.decode("utf-8").splitlines():
        line = json.loads(text)
        assert line.get("kind") in validators, text
        errors = [error.message for error in validators[line["kind"]].iter_errors(line)]
        assert not errors, f"{text}\n{errors}"
        seen.add(line["kind"])


def run(*arguments, code=0):
    result = subprocess.run([tool, *arguments, "--json"], stdin=subprocess.DEVNULL, capture_output=True, timeout=60, check=False)
    assert result.returncode == code, (arguments, result)
    take(result.stdout)


def run_together(*lines):
    """Virtual boards take their time: each line of arguments has a board of its own."""
    with concurrent.futures.ThreadPoolExecutor(len(lines)) as pool:
        list(pool.map(lambda line: run(*line), lines))


def path(name):
    return os.path.join(folder, name)


docs = os.path.dirname(schema_file)
injections = {"cmu": 5, "xbic": 1, "smpu": 1, "memu": 7, "intcm": 1, "pmc": 4, "swt": 1, "spt": 1, "reset": 2}
run_together(
    ("campaign", os.path.join(docs, "../campaigns/smoke.toml"), "--only", "crc-32,xbic-0,regp-soft", "--virtual",
     "--report", path("campaign")),
    ("ports",), ("status", "--virtual"), ("send", "help", "--virtual"),
    ("send", "get 4", "--virtual", "--record", path("answers")),
    *(("inject", module, str(case), "--virtual") for module, case in injections.items()))
run("check", path("answers"), "--virtual")
if shutil.which("weasyprint"):
    with open(path("campaign/report.pdf"), "rb") as file:
        assert file.read(5) == b"%PDF-"
with open(os.path.join(docs, "campaign-report.schema.json"), encoding="utf-8") as file:
    report_schema = json.load(file)
jsonschema.Draft7Validator.check_schema(report_schema)
with open(path("campaign/report.json"), encoding="utf-8") as file:
    report = json.load(file)
jsonschema.validate(report, report_schema)

# A figure's packets are those of the recording that it comes from: its report ends in the packet that is named.
def contents(block):
    """Direction (0: sent) and bytes of a packet."""
    direction, at = None, 28
    while True:
        tag, length = struct.unpack_from(">HH", block, at)
        at += 4
        if tag == 0:
            return direction, block[at:28 + struct.unpack_from("<I", block, 20)[0]]
        if tag == 35:
            direction = block[at + length - 1]
        at += length


def ends_in(number, header):
    stream = lambda count: b"".join(data for direction, data in packets[:count] if direction == 1)
    received, before = stream(number), len(stream(number - 1))
    starts = [at for at in range(len(received) - 7) if received.startswith(header, at)]
    return any(before < at + 12 + struct.unpack_from(">H", received, at + 6)[0] <= len(received) for at in starts)


with open(path("campaign/recording.pcapng"), "rb") as file:
    recording = file.read()
packets, at = [], 0
while at < len(recording):
    kind, length = struct.unpack_from("<II", recording, at)
    packets += [contents(recording[at:at + length])] if kind == 6 else []
    at += length
reports = {"crc-32": b"\x06\x03", "xbic-0": b"\x0c\x02", "regp-soft": b"\x05\x01"}
for case in report["cases"]:
    numbers = case["runs"][0]["packets"]
    assert packets[numbers["injection"] - 1] == (0, case["inject"].encode() + b"\r\n"), case
    assert ends_in(numbers["detection"], b"\xa5\xc3\0\0" + reports[case["id"]]), case

# One answer changed and one taken away; a frame of no module; a mark; text with everything that must be escaped.
with open(path("answers"), "rb") as file:
    answers = file.read()
monitor = answers.index(bytes.fromhex("0201000431"))
changed = bytearray(answers)
changed[monitor + 6] ^= 1
with open(path("changed"), "wb") as file:
    file.write(changed)
run("check", path("changed"), "--virtual", code=1)


def block(kind, body):
    return struct.pack("<II", kind, len(body) + 12) + body + struct.pack("<I", len(body) + 12)


def packet(direction, data, comment=b""):
    tags = b"\x00\x0c\x00\x10safetyworkbench\x00" + (
        b"\x00\x23\x00\x04" + struct.pack(">I", direction) if direction is not None else b"") + b"\0\0\0\0"
    body = struct.pack("<IIIII", 0, 0, 1000, len(tags + data), len(tags + data)) + tags + data
    body += b"\0" * (-len(body) % 4)
    if comment:
        body += struct.pack("<HH", 1, len(comment)) + comment + b"\0" * (-len(comment) % 4)
    return block(6, body + b"\0\0\0\0")


def frame(module, kind, payload):
    return b"\xa5\xc3\0\0" + bytes([module, kind]) + struct.pack(">H", len(payload)) + payload + b"\0\0\xd4\xb2"


odd = [packet(None, b"", "mark: \"Größe\"\\".encode()), packet(0, b'say "\\\x01\xe4"\r\n'), packet(1, frame(77, 1, b"\0\xff")),
       packet(1, frame(0, 0, b'\x1b[1m"quoted"\\\t\xe4\n')), packet(1, frame(13, 1, b"\xff" * 30)), packet(1, frame(15, 4, b"\xff" * 9))]
with open(path("odd"), "wb") as file:
    file.write(block(0x0A0D0D0A, struct.pack("<IHHq", 0x1A2B3C4D, 1, 0, -1)) + block(1, struct.pack("<HHI", 252, 0, 0)) + b"".join(odd))
run("decode", path("odd"))

# A board that says nothing; a recording that is served.
master, slave = os.openpty()
tty.setraw(master)
run("status", "sys", "--port", os.ttyname(slave), "--timeout", "0.1", code=3)
served = subprocess.Popen([tool, "serve", path("answers"), "--control", "--json"], stdin=subprocess.PIPE, stdout=subprocess.PIPE)
first = served.stdout.readline()
take(first)
with open(json.loads(first)["tty"], "rb", buffering=0):
    take(served.stdout.readline())
served.stdin.write(b"pause\nstep\nfault\nspeed 2\nto 0\nquit\n")
served.stdin.close()
take(served.stdout.read())
assert served.wait(timeout=60) == 0

assert seen == set(validators), f"never seen: {set(validators) - seen}"
print("all kinds of lines fit:", ", ".join(sorted(seen)))

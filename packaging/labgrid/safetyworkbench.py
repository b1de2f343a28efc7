# SPDX-License-Identifier: MIT
"""A labgrid driver: safety-workbench-cli on the serial port of a place, local or shared by another machine."""
import json
import subprocess

import attr
from labgrid.driver.common import Driver
from labgrid.driver.exception import ExecutionError
from labgrid.factory import target_factory
from labgrid.resource import SerialPort
from labgrid.step import step
from labgrid.util.proxy import proxymanager


@target_factory.reg_driver
@attr.s(eq=False)
class SafetyWorkbenchDriver(Driver):
    """Binds a SerialPort, or a NetworkSerialPort that is shared as a plain TCP connection (protocol "raw").

    Args:
        tool (str): name or path of the program
    """
    bindings = {"port": {"SerialPort", "NetworkSerialPort"}}
    tool = attr.ib(default="safety-workbench-cli", validator=attr.validators.instance_of(str))

    def line(self):
        """The options that name the port."""
        if isinstance(self.port, SerialPort):
            return ["--port", self.port.port]
        if self.port.protocol != "raw":
            raise ExecutionError(f"{self.port}: the tool takes plain TCP, not {self.port.protocol}")
        host, port = proxymanager.get_host_and_port(self.port)
        return ["--tcp", f"{host}:{port}"]

    @Driver.check_active
    @step(args=["verb", "arguments"])
    def run(self, verb, *arguments):
        """Runs a verb of the tool. Returns the exit code, the JSON lines, and what it said on standard error."""
        command = [self.tool, verb, *arguments, *self.line(), "--json"]
        result = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)
        return result.returncode, [json.loads(text) for text in result.stdout.splitlines()], result.stderr

    @Driver.check_active
    @step(args=["file", "report"])
    def campaign(self, file, report):
        """Runs a campaign and writes its reports into a folder. Returns the case lines by identifier.

        Raises ExecutionError where there is nothing to judge: a file with errors, no line, no board.
        """
        code, lines, complaint = self.run("campaign", str(file), "--report", str(report))
        if code not in (0, 1):
            raise ExecutionError(f"safety-workbench-cli ended with {code}: {complaint.strip()}")
        return {line["id"]: line for line in lines if line["kind"] == "case"}

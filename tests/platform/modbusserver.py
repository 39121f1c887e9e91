#!/usr/bin/python3
"""A Modbus/TCP server for the link tests, independent of the code under test (pymodbus).

modbusserver.py PORT [--garbage]

PORT 0 picks a free port. Once it accepts connections it says "listening PORT" on standard output.

Units 1 and 2, each with 5,000 coils, discrete inputs, holding and input registers, addressed from 0.
Commands on standard input, one a line, answered on standard output:
  set TABLE UNIT ADDRESS VALUE...   (TABLE: co, di, hr, ir)  -> ok
  get TABLE UNIT ADDRESS COUNT      -> the values
  requests                          -> reads and writes served so far, e.g. "reads 3 writes 1"
  log                               -> every request served so far, one "fc unit address count" a line, then "end"
With --garbage every request is answered with bytes that are not a Modbus answer.
"""
import asyncio
import logging
import os
import socket
import sys
import threading
import time

from pymodbus.datastore import ModbusSequentialDataBlock, ModbusServerContext, ModbusSlaveContext
from pymodbus.server import StartAsyncTcpServer

SIZE = 5000
lock = threading.Lock()
served = []  # (function code, unit, address, count)


class CountingContext(ModbusSlaveContext):
    def __init__(self, unit):
        super().__init__(di=ModbusSequentialDataBlock(0, [0] * SIZE), co=ModbusSequentialDataBlock(0, [0] * SIZE),
                         hr=ModbusSequentialDataBlock(0, [0] * SIZE), ir=ModbusSequentialDataBlock(0, [0] * SIZE),
                         zero_mode=True)
        self.unit = unit

    def getValues(self, fc_as_hex, address, count=1):
        with lock:
            if fc_as_hex in (1, 2, 3, 4):
                served.append((fc_as_hex, self.unit, address, count))
            return super().getValues(fc_as_hex, address, count)

    def setValues(self, fc_as_hex, address, values):
        with lock:
            served.append((fc_as_hex, self.unit, address, len(values)))
            super().setValues(fc_as_hex, address, values)


contexts = {1: CountingContext(1), 2: CountingContext(2)}
FC = {"co": 1, "di": 2, "hr": 3, "ir": 4}


def commands():
    for line in sys.stdin:
        words = line.split()
        if not words:
            continue
        with lock:
            if words[0] == "set":
                context = contexts[int(words[2])]
                values = [int(v) for v in words[4:]]
                context.store[context.decode(FC[words[1]])].setValues(int(words[3]), values)
                answer = "ok"
            elif words[0] == "get":
                context = contexts[int(words[2])]
                values = context.store[context.decode(FC[words[1]])].getValues(int(words[3]), int(words[4]))
                answer = " ".join(str(int(v)) for v in values)
            elif words[0] == "requests":
                reads = sum(1 for s in served if s[0] in (1, 2, 3, 4))
                answer = f"reads {reads} writes {len(served) - reads}"
            elif words[0] == "log":
                answer = "\n".join(" ".join(str(v) for v in s) for s in served) + ("\n" if served else "") + "end"
            else:
                answer = "unknown command"
        print(answer, flush=True)
    os._exit(0)  # the test closed our input: it is done with us


async def garbage(port):
    async def answer(reader, writer):
        while await reader.read(260):
            writer.write(b"\x00\x01\xff\xff\x00\x03\x01\x99\x42")
            await writer.drain()
    server = await asyncio.start_server(answer, "127.0.0.1", port)
    async with server:
        await server.serve_forever()


def announce(port):
    while True:
        try:
            socket.create_connection(("127.0.0.1", port), timeout=1).close()
            break
        except OSError:
            time.sleep(0.05)
    print(f"listening {port}", flush=True)
    commands()


def main():
    port = int(sys.argv[1])
    if port == 0:
        with socket.socket() as s:
            s.bind(("127.0.0.1", 0))
            port = s.getsockname()[1]
    # A client that goes away is an error in pymodbus's log; the tests do that on purpose.
    logging.getLogger("pymodbus").setLevel(logging.CRITICAL + 1)
    threading.Thread(target=announce, args=(port,), daemon=True).start()
    if "--garbage" in sys.argv:
        asyncio.run(garbage(port))
    else:
        asyncio.run(StartAsyncTcpServer(context=ModbusServerContext(slaves=contexts, single=False),
                                        address=("127.0.0.1", port), allow_reuse_address=True))


if __name__ == "__main__":
    main()

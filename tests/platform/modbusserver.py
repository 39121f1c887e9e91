#!/usr/bin/python3
"""A Modbus server for the link tests, independent of the code under test (pymodbus's data store and
request handling behind a small front end of our own, so that faults real devices show can be switched on).

modbusserver.py PORT [--garbage]                         Modbus/TCP on 127.0.0.1:PORT (0: a free port)
modbusserver.py --serial PATH [--baud B] [--parity N|E|O]   Modbus RTU on the serial device PATH

Once it serves it says "listening PORT" (or "listening PATH") on standard output.

Units 1 and 2, each with 5,000 coils, discrete inputs, holding and input registers, addressed from 0.
Commands on standard input, one a line, answered on standard output:
  set TABLE UNIT ADDRESS VALUE...   (TABLE: co, di, hr, ir)  -> ok
  get TABLE UNIT ADDRESS COUNT      -> the values
  requests                          -> requests carried out so far, e.g. "reads 3 writes 1"
  log                               -> every request that reached a unit, one "fc unit address count" a line,
                                       then "end"; one not answered at once or not carried out says why after
                                       it: "late", "silent", "stall" or "exception CODE"
Behaviours, each answered "ok" and kept until "behave normal":
  behave normal                     all of them off; late answers not sent yet are dropped
  nofc22                            mask write register (22) answered with exception 1
  limit N [CODE]                    a read of more than N registers or bits answered with exception CODE (2)
  late UNIT MS                      requests to UNIT carried out at once, answered MS milliseconds later
  silent UNIT                       UNIT neither carries out nor answers anything
  exception FC ADDRESS CODE         requests of function FC touching ADDRESS answered with exception CODE
  stall                             requests neither carried out nor answered, connections kept
  reset                             a connection is reset (RST) as soon as a request arrives on it (TCP)
  idleclose MS                      a connection idle for MS milliseconds is closed (TCP)
  corrupt N                         the next N answers carry a wrong transaction id (TCP) or CRC (serial)
With --garbage every request is answered with bytes that are not a Modbus answer.
"""
import asyncio
import logging
import os
import socket
import struct
import sys
import threading
import time

from pymodbus.datastore import ModbusSequentialDataBlock, ModbusServerContext, ModbusSlaveContext
from pymodbus.factory import ServerDecoder
from pymodbus.pdu import ExceptionResponse
from pymodbus.utilities import computeCRC

SIZE = 5000
lock = threading.Lock()  # the data store, the log and the behaviours, shared with the command thread
served = []  # (function code, unit, address, count, why it was not answered at once or carried out)


def unit_context():
    blocks = {t: ModbusSequentialDataBlock(0, [0] * SIZE) for t in ("di", "co", "hr", "ir")}
    return ModbusSlaveContext(**blocks, zero_mode=True)


contexts = ModbusServerContext(slaves={1: unit_context(), 2: unit_context()}, single=False)
FC = {"co": 1, "di": 2, "hr": 3, "ir": 4}
READS = (1, 2, 3, 4, 23)
decoder = ServerDecoder()


class Behaviour:
    epoch = 0  # counts "behave normal"

    def __init__(self):
        self.nofc22 = False
        self.limit = None  # (most registers or bits a read may ask for, exception code)
        self.late = {}  # unit -> seconds
        self.silent = set()
        self.exceptions = []  # (function code, address, exception code)
        self.stall = False
        self.reset = False
        self.idleclose = None  # seconds
        self.corrupt = 0


behaviour = Behaviour()


def span(request):
    """The first address and the count of what a request reads or writes."""
    address = getattr(request, "read_address", getattr(request, "address", 0))
    count = getattr(request, "read_count", getattr(request, "count", None))
    if count is None:
        count = len(getattr(request, "values", None) or [0])
    return address, count


def refusal(fc, address, count):
    """The exception code a behaviour answers this request with, or None."""
    if fc == 22 and behaviour.nofc22:
        return 1
    if fc in READS and behaviour.limit and count > behaviour.limit[0]:
        return behaviour.limit[1]
    for rule_fc, rule_address, code in behaviour.exceptions:
        if fc == rule_fc and address <= rule_address < address + count:
            return code
    return None


def serve(unit, pdu, gateway):
    """Carries out one request PDU for UNIT: (answer PDU or None, seconds to wait before answering).
    A gateway (TCP) answers for a unit it does not have; a unit missing on a serial line says nothing."""
    with lock:
        if not pdu or (unit not in (1, 2) and not gateway):
            return None, 0
        try:
            request = decoder.decode(pdu)
        except Exception:  # a request pymodbus cannot take apart: as a device would, illegal data value
            return bytes([pdu[0] | 0x80, 3]), 0
        if request is None:
            return bytes([pdu[0] | 0x80, 3]), 0
        fc = request.function_code
        address, count = span(request)
        if unit not in (1, 2):
            return bytes([fc | 0x80, 0x0B]), 0  # gateway: no answer from the target
        why = "silent" if unit in behaviour.silent else "stall" if behaviour.stall else None
        code = refusal(fc, address, count) if why is None else None
        if why is not None or code is not None:
            served.append((fc, unit, address, count, why or f"exception {code}"))
            return (None, 0) if why else (bytes([fc | 0x80, code]), 0)
        try:
            response = request.execute(contexts[unit])
        except Exception:
            response = ExceptionResponse(fc, 4)
        delay = behaviour.late.get(unit, 0)
        if not response.isError():
            served.append((fc, unit, address, count, "late" if delay else ""))
        return bytes([response.function_code]) + response.encode(), delay


def corrupting():
    """Whether the next answer is to be corrupted."""
    with lock:
        if behaviour.corrupt <= 0:
            return False
        behaviour.corrupt -= 1
        return True


def answer_later(delay, send, frame):
    if not delay:
        send(frame)
        return
    epoch = behaviour.epoch

    def late():
        if behaviour.epoch == epoch:  # no late answer of an earlier test reaches the next one
            send(frame)
    asyncio.get_running_loop().call_later(delay, late)


async def tcp_connection(reader, writer):
    loop = asyncio.get_running_loop()
    last = loop.time()

    def send(frame):
        if not writer.is_closing():
            writer.write(frame)

    try:
        while True:
            with lock:
                idle = behaviour.idleclose
            # Short waits so that behaviours switched on later apply to connections already open.
            wait = 0.1 if idle is None else max(0.0, min(0.1, last + idle - loop.time()))
            try:
                header = await asyncio.wait_for(reader.readexactly(7), wait)
            except asyncio.TimeoutError:
                if idle is not None and loop.time() - last >= idle:
                    break
                continue
            transaction, protocol, length, unit = struct.unpack(">HHHB", header)
            if length < 2 or length > 254:
                break
            pdu = await reader.readexactly(length - 1)
            last = loop.time()
            with lock:
                reset = behaviour.reset
            if reset:
                writer.get_extra_info("socket").setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
                writer.transport.abort()
                return
            answer, delay = serve(unit, pdu, gateway=True)
            if answer is None:
                continue
            if corrupting():
                transaction ^= 0x5A5A
            answer_later(delay, send, struct.pack(">HHHB", transaction, protocol, len(answer) + 1, unit) + answer)
    except (asyncio.IncompleteReadError, ConnectionError):
        pass
    writer.close()


async def serve_tcp(port):
    server = await asyncio.start_server(tcp_connection, "127.0.0.1", port)
    async with server:
        await server.serve_forever()


async def serve_serial(path, baud, parity):
    import serial  # pyserial: only the serial line needs it
    line = serial.Serial(path, baudrate=baud, parity=parity, timeout=0)
    # A frame ends with a silence of 3.5 characters (11 bits each), at least 1.75 ms.
    gap = max(3.5 * 11 / baud, 0.00175)
    loop = asyncio.get_running_loop()
    received = bytearray()
    timer = None

    def frame_ended():
        frame = bytes(received)
        received.clear()
        if len(frame) < 4 or struct.pack(">H", computeCRC(frame[:-2])) != frame[-2:]:
            return  # a device ignores what it cannot read
        unit = frame[0]
        if unit == 0:  # broadcast: every unit carries it out, none answers
            for each in (1, 2):
                serve(each, frame[1:-2], gateway=False)
            return
        answer, delay = serve(unit, frame[1:-2], gateway=False)
        if answer is None:
            return
        answer = bytes([unit]) + answer
        crc = computeCRC(answer) ^ (0xFFFF if corrupting() else 0)
        answer_later(delay, line.write, answer + struct.pack(">H", crc))

    def readable():
        nonlocal timer
        try:
            received.extend(line.read(4096))
        except (OSError, serial.SerialException):  # the other end of the line is gone: so are we
            loop.remove_reader(line.fileno())
            gone.set()
            return
        if timer:
            timer.cancel()
        timer = loop.call_later(gap, frame_ended)

    gone = asyncio.Event()
    loop.add_reader(line.fileno(), readable)
    await gone.wait()


def command(words):
    """One command's answer."""
    name, args = words[0], [int(w) for w in words[1:] if w.lstrip("-").isdigit()]
    if name == "set":
        context = contexts[int(words[2])]
        context.store[context.decode(FC[words[1]])].setValues(args[1], args[2:])
    elif name == "get":
        context = contexts[int(words[2])]
        values = context.store[context.decode(FC[words[1]])].getValues(args[1], args[2])
        return " ".join(str(int(v)) for v in values)
    elif name == "requests":
        done = [s for s in served if s[4] in ("", "late")]
        reads = sum(1 for s in done if s[0] in READS)
        return f"reads {reads} writes {len(done) - reads}"
    elif name == "log":
        return "".join(" ".join(str(v) for v in s).strip() + "\n" for s in served) + "end"
    elif words == ["behave", "normal"]:
        behaviour.__init__()
        Behaviour.epoch += 1
    elif name == "nofc22":
        behaviour.nofc22 = True
    elif name == "limit":
        behaviour.limit = (args[0], args[1] if len(args) > 1 else 2)
    elif name == "late":
        behaviour.late[args[0]] = args[1] / 1000
    elif name == "silent":
        behaviour.silent.add(args[0])
    elif name == "exception":
        behaviour.exceptions.append((args[0], args[1], args[2]))
    elif name in ("stall", "reset"):
        setattr(behaviour, name, True)
    elif name == "idleclose":
        behaviour.idleclose = args[0] / 1000
    elif name == "corrupt":
        behaviour.corrupt = args[0]
    else:
        return "unknown command"
    return "ok"


def commands():
    for line in sys.stdin:
        words = line.split()
        if not words:
            continue
        with lock:
            try:
                answer = command(words)
            except (IndexError, KeyError, ValueError):
                answer = "bad command"
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


def option(name, default):
    return sys.argv[sys.argv.index(name) + 1] if name in sys.argv else default


def main():
    logging.getLogger("pymodbus").setLevel(logging.CRITICAL + 1)  # refusals are what the tests ask for
    if "--serial" in sys.argv:
        path = option("--serial", "")

        async def serial_then_announce():
            task = asyncio.create_task(serve_serial(path, int(option("--baud", "19200")), option("--parity", "E")))
            await asyncio.sleep(0)  # the port is open and read once the task has run
            if not task.done():
                print(f"listening {path}", flush=True)
                threading.Thread(target=commands, daemon=True).start()
            await task
        asyncio.run(serial_then_announce())
        return
    port = int(sys.argv[1])
    if port == 0:
        with socket.socket() as s:
            s.bind(("127.0.0.1", 0))
            port = s.getsockname()[1]
    threading.Thread(target=announce, args=(port,), daemon=True).start()
    asyncio.run(garbage(port) if "--garbage" in sys.argv else serve_tcp(port))


if __name__ == "__main__":
    main()

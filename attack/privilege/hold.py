"""hold.py PROGRAM FOUND: waits for a process of this user's own that runs PROGRAM, stops it and traces it, so that not even
its end is seen; writes to FOUND whether root's terminal came with it."""
import ctypes
import os
import signal
import sys

program, found = sys.argv[1:]
trace = ctypes.CDLL(None).ptrace
SEIZE = 0x4206


def held():
    for process in filter(str.isdigit, os.listdir("/proc")):
        try:
            if os.readlink(f"/proc/{process}/exe") == program and trace(SEIZE, int(process), 0, 0) == 0:
                return process
        except OSError:
            pass
    return None


while (process := held()) is None:
    pass
os.kill(int(process), signal.SIGSTOP)
with open(f"/proc/{process}/stat", encoding="ascii") as stat:
    terminals = [stat.read().rpartition(")")[2].split()[4]]
for descriptor in os.listdir(f"/proc/{process}/fd"):
    terminals.append(os.readlink(f"/proc/{process}/fd/{descriptor}"))
with open(found, "w", encoding="ascii") as answer:
    answer.write("terminal\n" if terminals[0] != "0" or any("/dev/pts/" in one for one in terminals) else "nothing\n")
signal.pause()

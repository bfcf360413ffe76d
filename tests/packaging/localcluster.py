"""A Slurm of two nodes on the loopback address, in a folder of its own, that leaves no process behind."""

import ctypes
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import time

PROGRAMS = ("munged", "mungekey", "slurmctld", "slurmd", "sbatch", "squeue", "scontrol", "sinfo")
SUPERUSERS = ":/usr/sbin:/sbin"  # where the daemons are
PR_SET_PDEATHSIG, PR_SET_CHILD_SUBREAPER = 1, 36
prctl = ctypes.CDLL(None, use_errno=True).prctl


def reason_against():
    """Why there can't be one here; None when there can."""
    missing = [name for name in PROGRAMS if shutil.which(name, path=os.environ["PATH"] + SUPERUSERS) is None]
    if missing:
        return "there is no " + ", ".join(missing)
    return None if os.geteuid() == 0 else "its daemons need root"


def until(what, condition, seconds=120):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise TimeoutError(f"waited {seconds} s for {what}")
        time.sleep(0.1)


def descendants(root):
    parents = {}
    for entry in pathlib.Path("/proc").glob("[0-9]*/stat"):
        try:
            state, parent = entry.read_text().rpartition(")")[2].split()[:2]
        except OSError:
            continue
        if state != "Z":
            parents[int(entry.parent.name)] = int(parent)
    found = {root}
    while new := {pid for pid, parent in parents.items() if parent in found} - found:
        found |= new
    return found - {root}


def kill_below(root):
    """Ends what descends from a process that adopts orphans, however fast it starts more."""
    while below := descendants(root):
        for pid in below:
            try:
                os.kill(pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
        time.sleep(0.01)


def free_ports(count):
    sockets = [socket.socket() for _ in range(count)]
    for each in sockets:
        each.bind(("127.0.0.1", 0))
    ports = [each.getsockname()[1] for each in sockets]
    for each in sockets:
        each.close()
    return ports


def before_daemon():
    prctl(PR_SET_PDEATHSIG, signal.SIGKILL)
    prctl(PR_SET_CHILD_SUBREAPER, 1)


class DoesNotStart(Exception):
    """Where daemons may not do what Slurm's do."""


class LocalCluster:
    """Two nodes, n1 and n2, of four processors each. A context: ends everything that it has started on leaving."""

    def __init__(self, folder):
        self.folder = folder
        self.daemons = {}
        prctl(PR_SET_CHILD_SUBREAPER, 1)

    def __enter__(self):
        try:
            self.start()
        except BaseException as problem:
            said = "\n".join([str(problem), *self.logs()])
            self.__exit__()
            if isinstance(problem, (TimeoutError, OSError, subprocess.CalledProcessError)):
                raise DoesNotStart(said) from problem
            raise
        return self

    def __exit__(self, *_):
        # Their pid files tell which of them still serve.
        for file in self.folder.glob("*.pid"):
            number = int(file.read_text() or 0)
            if number in descendants(os.getpid()):
                os.kill(number, signal.SIGTERM)
        end = time.monotonic() + 5
        while any(daemon.poll() is None for daemon in self.daemons.values()) and time.monotonic() < end:
            time.sleep(0.05)
        kill_below(os.getpid())
        try:
            while True:
                os.waitpid(-1, 0)
        except ChildProcessError:
            pass

    def start(self):
        host = socket.gethostname().split(".")[0]
        control, *ports = free_ports(3)
        folder = self.folder
        (folder / "slurm.conf").write_text(f"""
ClusterName=local
SlurmctldHost={host}(127.0.0.1)
SlurmctldPort={control}
SlurmUser=root
SlurmdUser=root
AuthType=auth/munge
AuthInfo=socket={folder}/munge.socket,cred_expire=5
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_CPU
MpiDefault=none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
ReturnToService=2
SlurmdTimeout=10
KillWait=2
SlurmdParameters=config_overrides
SchedulerParameters=batch_sched_delay=0,sched_min_interval=100000,bf_interval=1
StateSaveLocation={folder}/state
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd.%n.pid
SlurmdSpoolDir={folder}/spool.%n
SlurmctldLogFile={folder}/slurmctld.log
SlurmdLogFile={folder}/slurmd.%n.log
""" + "".join(f"NodeName=n{i + 1} NodeHostname={host} NodeAddr=127.0.0.1 Port={port} CPUs=4\n"
              for i, port in enumerate(ports)) +
            "PartitionName=all Nodes=n[1-2] Default=YES State=UP MaxTime=INFINITE\n")
        (folder / "state").mkdir()
        os.environ["SLURM_CONF"] = str(folder / "slurm.conf")
        os.environ["PATH"] += SUPERUSERS
        subprocess.run(["mungekey", "--create", "--keyfile", folder / "munge.key"], check=True)
        self.launch("munged", "--foreground", "--force", "--origin=127.0.0.1", f"--key-file={folder}/munge.key",
                    f"--socket={folder}/munge.socket", f"--pid-file={folder}/munged.pid",
                    f"--log-file={folder}/munged.log", f"--seed-file={folder}/munge.seed")
        until("munged", (folder / "munge.socket").exists)
        self.launch("slurmctld", "-D", "-c")
        for node in ("n1", "n2"):
            self.launch("slurmd", "-D", "-N", node, name=node)
        until("two nodes", lambda: self.ask("sinfo", "-h", "-o", "%T %D") == "idle 2")

    def launch(self, *command, name=None):
        name = name or command[0]
        with open(self.folder / f"{name}.out", "ab") as output:
            self.daemons[name] = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                                                  cwd=self.folder, preexec_fn=before_daemon)

    def kill_node(self, node):
        """As when its power fails: at once, with all that runs on it."""
        daemon = self.daemons.pop(node)
        daemon.send_signal(signal.SIGSTOP)
        kill_below(daemon.pid)
        daemon.kill()
        daemon.wait()

    def ask(self, *command):
        """What a command of Slurm prints, asked until the controller answers."""
        answers = []

        def is_answered():
            result = subprocess.run(command, capture_output=True, text=True)
            answers.append(result.stdout.strip())
            return result.returncode == 0
        until(f"an answer to {' '.join(command)}", is_answered)
        return answers[-1]

    def is_idle(self):
        return not self.ask("squeue", "-h", "-o", "%i")

    def restarts(self):
        """By number of the array's task."""
        restarts = {}
        for job in self.ask("scontrol", "-o", "show", "job").splitlines():
            fields = dict(field.partition("=")[::2] for field in job.split())
            if "ArrayTaskId" in fields:
                restarts[fields["ArrayTaskId"]] = int(fields["Restarts"])
        return restarts

    def logs(self):
        for file in sorted(self.folder.glob("*.log")) + sorted(self.folder.glob("*.out")):
            yield f"== {file.name}\n" + file.read_text(errors="replace")[-3000:]

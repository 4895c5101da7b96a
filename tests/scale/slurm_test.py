#!/usr/bin/python3
"""slurm_test.py SOURCE BUILD [DOCUMENTS]: examples/slurm/convert.sh on a controller and two nodes, which are killed
meanwhile. All are processes of this machine, without systemd; they must start as root."""
import os
import pathlib
import shutil
import socket
import subprocess
import sys
import time
import unittest

import run_fixture

CONFIGURATION = """
ClusterName=quillow
SlurmctldHost={host}(127.0.0.1)
SlurmctldPort={controller_port}
SlurmUser=root
SlurmdUser=root
AuthType=auth/munge
AuthInfo=socket={folder}/munge/socket
CryptoType=crypto/munge
StateSaveLocation={folder}/slurm/state
SlurmdSpoolDir={folder}/slurm/%n
SlurmctldPidFile={folder}/slurm/controller.pid
SlurmdPidFile={folder}/slurm/%n.pid
ProctrackType=proctrack/linuxproc
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
ReturnToService=2
MpiDefault=none
SlurmdTimeout=10
SlurmctldTimeout=10
MinJobAge=5
SchedulerParameters=defer,batch_sched_delay=1,sched_interval=2
MaxArraySize=2000
NodeName=node1,node2 NodeHostname={host} NodeAddr=127.0.0.1 Port={node_ports} CPUs=1 RealMemory=500
PartitionName=all Nodes=node1,node2 Default=YES State=UP MaxTime=INFINITE
"""


class Slurm(run_fixture.Run):
    def setUp(self):
        super().setUp()
        for name in ("munge", "slurm/state", "slurm/node1", "slurm/node2"):
            (self.folder / name).mkdir(parents=True)
        (self.folder / "munge").chmod(0o755)
        key = self.folder / "munge/key"
        key.write_bytes(os.urandom(128))
        key.chmod(0o400)
        munge = self.folder / "munge"
        self.start("munged", "-F", "--force", f"--key-file={key}", f"--socket={munge}/socket", f"--pid-file={munge}/pid",
                   f"--log-file={munge}/log", f"--seed-file={munge}/seed")
        ports = [run_fixture.free_port() for _ in range(3)]
        self.configuration = self.folder / "slurm.conf"
        self.configuration.write_text(CONFIGURATION.format(
            host=socket.gethostname().split(".")[0], folder=self.folder, controller_port=ports[0],
            node_ports=f"{ports[1]},{ports[2]}"))
        self.environment["SLURM_CONF"] = str(self.configuration)
        os.environ["SLURM_CONF"] = str(self.configuration)
        self.controller = self.start_controller("-c")
        self.nodes = {name: self.start_node(name) for name in ("node1", "node2")}
        self.wait_until(lambda: self.idle_nodes() == 2, "two idle nodes")

    def start_controller(self, *options):
        return self.start("slurmctld", "-D", "-f", self.configuration, *options)

    def start_node(self, name):
        return self.start("slurmd", "-D", "-N", name, "-f", self.configuration)

    def idle_nodes(self):
        answer = subprocess.run(["sinfo", "-h", "-N", "-o", "%T"], capture_output=True, text=True)
        return answer.stdout.split().count("idle")

    def wait_until(self, condition, what, seconds=30):
        end = time.monotonic() + seconds
        while not condition():
            if time.monotonic() > end:
                self.log.flush()
                self.fail(f"no {what}: " + (self.folder / "daemons.log").read_text()[-3000:])
            time.sleep(0.2)

    def test_every_document_has_one_result_though_a_node_and_the_controller_die(self):
        client = self.begin(self.source / "examples/slurm/convert.sh", self.manifest, self.output, "24")
        done = self.wait_for_results(0.2, client)
        self.kill(self.nodes["node2"])
        print("node killed after", done, "documents")
        done = self.wait_for_results(0.4, client)
        self.kill(self.controller)
        print("controller killed after", done, "documents")
        time.sleep(2)
        self.start_controller()
        self.start_node("node2")
        output = client.communicate()[0]
        print(output)
        self.assertEqual(client.returncode, 1, output)  # some documents are damaged
        self.expect_one_result_for_each()


if __name__ == "__main__":
    if os.getuid() != 0 or not shutil.which("slurmctld"):
        sys.exit("the daemons of Slurm need root")
    run_fixture.Run.source, run_fixture.Run.build = map(pathlib.Path, sys.argv[1:3])
    run_fixture.Run.documents = int(sys.argv[3]) if len(sys.argv) > 3 else 20_000
    unittest.main(argv=sys.argv[:1])

#!/usr/bin/python3
"""parallel_test.py SOURCE BUILD [DOCUMENTS]: examples/parallel/convert.sh on two hosts, one of them dying meanwhile. Both
are this machine, each with an sshd of its own on a high port."""
import os
import pathlib
import pwd
import subprocess
import sys
import unittest

import run_fixture


class Parallel(run_fixture.Run):
    def start_hosts(self, count):
        """Returns the daemons. parallel reaches them by the file `hosts`."""
        keys = self.folder / "key"
        subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", keys], check=True)
        if os.getuid() == 0:
            os.makedirs("/run/sshd", exist_ok=True)
        user = pwd.getpwuid(os.getuid()).pw_name
        daemons, lines = [], []
        for _ in range(count):
            port = run_fixture.free_port()
            daemons.append(self.start(
                "/usr/sbin/sshd", "-D", "-e", "-f", "/dev/null", "-h", keys, "-o", f"Port={port}", "-o", "ListenAddress=127.0.0.1",
                "-o", f"AuthorizedKeysFile={keys}.pub", "-o", "StrictModes=no", "-o", "PidFile=none", "-o", "UsePAM=no",
                "-o", "PermitRootLogin=yes", "-o", "MaxStartups=100"))
            lines.append(f"1/ssh -i {keys} -p {port} -o StrictHostKeyChecking=no -o UserKnownHostsFile=/dev/null "
                         f"-o LogLevel=ERROR -o ServerAliveInterval=5 {user}@127.0.0.1\n")
        self.hosts = self.folder / "hosts"
        self.hosts.write_text("".join(lines))
        return daemons

    def kill_host(self, daemon):
        """The daemon and its sessions, which are in groups of their own, with all that runs in them."""
        children = {}
        for status in pathlib.Path("/proc").glob("[0-9]*/stat"):
            try:
                fields = status.read_text().rsplit(")", 1)[1].split()
                children.setdefault(int(fields[1]), []).append(int(status.parent.name))
            except OSError:
                pass
        waiting = [daemon.pid]
        for process in waiting:
            waiting += children.get(process, [])
        for process in waiting:
            try:
                os.kill(process, 9)
            except ProcessLookupError:
                pass
        daemon.wait()
        return len(waiting)

    def test_every_document_has_one_result_though_a_host_dies(self):
        daemons = self.start_hosts(2)
        client = self.begin(self.source / "examples/parallel/convert.sh", self.hosts, self.manifest, self.output, "40")
        done = self.wait_for_results(0.3, client)
        killed = self.kill_host(daemons[1])
        print(f"host killed, {killed} processes, after {done} documents")
        output = client.communicate()[0]
        print(output)
        self.assertEqual(client.returncode, 1, output)  # some documents are damaged
        self.expect_one_result_for_each()

    def test_a_run_without_any_host_is_not_complete(self):
        self.start_hosts(1)[0].kill()
        client = self.begin(self.source / "examples/parallel/convert.sh", self.hosts, self.manifest, self.output, "4")
        client.communicate()
        self.assertNotIn(client.returncode, (0, 1))


if __name__ == "__main__":
    run_fixture.Run.source, run_fixture.Run.build = map(pathlib.Path, sys.argv[1:3])
    run_fixture.Run.documents = int(sys.argv[3]) if len(sys.argv) > 3 else 20_000
    unittest.main(argv=sys.argv[:1])

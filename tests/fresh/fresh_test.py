"""Tests on a minimal Debian 12 made by debootstrap, in which nothing of this machine is installed; run as root.

The mirror, its proxy and the other archives are those of this machine's apt. Each case works in a copy of the minimal system, in
which only git and ca-certificates are added, and clones the last commit of the project into it.
"""
import os
import pathlib
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache")) / "quillow-fresh"
RELEASE = "bookworm"
USER = "someone"
WINDOW_PATIENCE_SECONDS = 60
COMPILATIONS = os.environ.get("CCACHE_DIR")
UNATTENDED = {"DEBIAN_FRONTEND": "noninteractive"}


def run(*command, **options):
    return subprocess.run([str(part) for part in command], check=True, **options)


def output_of(*command):
    return run(*command, stdout=subprocess.PIPE, text=True).stdout


class Archives:
    """The configuration of this machine's apt: lines of (address, release, component), and proxies."""

    def __init__(self):
        told = output_of("apt-get", "indextargets", "--format", "$(REPO_URI) $(RELEASE) $(COMPONENT)", "Created-By: Packages")
        self.lines = sorted({tuple(line.split()) for line in told.splitlines() if RELEASE in line.split()[1]})
        self.proxies = [line for line in output_of("apt-config", "dump").splitlines()
                        if line.startswith("Acquire::http") and "Proxy" in line and '""' not in line]

    @property
    def mirror(self):
        return next(address for address, release, _ in self.lines if release == RELEASE)

    def environment(self):
        proxies = {line.split("::")[1] + "_proxy": line.split('"')[1] for line in self.proxies if "::Proxy " in line}
        return {**os.environ, **proxies}

    def write(self, root):
        (root / "etc/apt/sources.list").write_text("".join(f"deb {' '.join(line)}\n" for line in self.lines))
        (root / "etc/apt/apt.conf.d/90proxy").write_text("".join(line + "\n" for line in self.proxies))


def home_of(user):
    return "/root" if user == "root" else f"/home/{user}"


class Machine:
    """A root folder with processes of its own, which end with their command."""

    def __init__(self, root):
        self.root = root

    def run(self, script, user="root", binds=(), **options):
        mounts = [f"mount -t proc proc {self.root}/proc", f"mount --rbind /dev {self.root}/dev",
                  f"mount -t tmpfs -o mode=1777 tmpfs {self.root}/dev/shm", f"mount -t tmpfs -o mode=1777 tmpfs {self.root}/tmp"]
        for place in binds:
            mounts += [f"mkdir -p {self.root}{place}", f"mount --bind {place} {self.root}{place}"]
        environment = {"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", **options.pop("environment", {})}
        if COMPILATIONS:
            mounts += [f"mkdir -p {self.root}/ccache", f"mount --bind {shlex.quote(COMPILATIONS)} {self.root}/ccache"]
            (self.root / "etc/ccache.conf").write_text(
                f"cache_dir = /ccache\nread_only = true\ntemporary_dir = /tmp/ccache-{user}\nbase_dir = {home_of(user)}\nhash_dir = false\n")
            # A compilation is known by its locale, too.
            environment |= {name: value for name, value in os.environ.items() if name == "LANG" or name.startswith("LC_")}
        inside = "env -i " + " ".join(shlex.quote(f"{name}={value}") for name, value in environment.items())
        login = f"su {user} -s /bin/bash -c" if user != "root" else "bash -c"
        command = f"set -e\ncd ~{user}\nexport HOME=~{user}\n{script}"
        whole = " && ".join(mounts + [f"exec chroot {self.root} {inside} {login} {shlex.quote(command)}"])
        return run("unshare", "--mount", "--pid", "--fork", "--kill-child", "bash", "-c", whole, **options)


class Fresh(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        if os.geteuid() != 0:
            raise unittest.SkipTest("needs root: a root folder is made and changed into")
        cls.archives = Archives()
        cls.base = CACHE / f"{RELEASE}.tar"
        if not cls.base.exists():
            cls.make_base()

    @classmethod
    def make_base(cls):
        CACHE.mkdir(parents=True, exist_ok=True)
        with tempfile.TemporaryDirectory(prefix="quillow-fresh-") as folder:
            root = pathlib.Path(folder) / "root"
            run("debootstrap", "--variant=minbase", "--include=git,ca-certificates", RELEASE, root, cls.archives.mirror,
                env=cls.archives.environment())
            part = cls.base.with_suffix(".part")
            run("tar", "--create", "--one-file-system", "--file", part, "--directory", root, ".")
            part.rename(cls.base)

    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="quillow-fresh-", ignore_cleanup_errors=True)
        self.addCleanup(temporary.cleanup)
        root = pathlib.Path(temporary.name)
        root.chmod(0o755)
        run("tar", "--extract", "--file", self.base, "--directory", root)
        self.archives.write(root)
        shutil.copy("/etc/resolv.conf", root / "etc/resolv.conf")
        self.machine = Machine(root)

    def add_user(self):
        """A user who may use sudo, as the installer of the distribution makes one."""
        self.machine.run(f"apt-get -qq update && apt-get -qq install -y sudo >/dev/null && useradd --create-home {USER} && "
                         f"echo '{USER} ALL=(ALL) NOPASSWD: ALL' >/etc/sudoers.d/{USER}")

    def clone(self, user):
        bundle = self.machine.root / "project.bundle"
        run("git", "-c", f"safe.directory={SOURCE}", "-C", SOURCE, "bundle", "create", "--quiet", bundle, "HEAD")
        self.machine.run("git -c init.defaultBranch=main clone --quiet /project.bundle quillow", user)

    def home(self, user):
        return self.machine.root / home_of(user).lstrip("/")

    def assert_samples_converted(self, out):
        """The folder has the text of each RTF sample."""
        samples = sorted((SOURCE / "samples").glob("*.rtf"))
        self.assertEqual(sorted(path.name for path in out.iterdir()), [sample.stem + ".txt" for sample in samples])
        for sample in samples:
            expected = (SOURCE / f"samples/expected/{sample.name}.txt").read_bytes()
            self.assertEqual((out / f"{sample.stem}.txt").read_bytes(), expected, sample.name)

    def check_run(self, user):
        self.clone(user)
        self.machine.run("cd quillow && ./run samples/*.rtf -o out", user)
        self.assert_samples_converted(self.home(user) / "quillow/out")

    def runAsRoot(self):
        self.check_run("root")

    def runAsUser(self):
        self.add_user()
        self.check_run(USER)

    def testsAsRoot(self):
        self.clone("root")
        self.machine.run("cd quillow && ./test")

    def testsAsUser(self):
        self.add_user()
        self.clone(USER)
        self.machine.run("cd quillow && ./test", USER)

    def install(self, *names):
        """Makes the Debian packages, and installs those with these names and what they need."""
        run(SOURCE / "package")
        packages = self.machine.root / "packages"
        packages.mkdir()
        for name in names:
            package, = (SOURCE / "build/packages").glob(f"{name}_*.deb")
            shutil.copy(package, packages)
        self.machine.run("apt-get -qq update && apt-get install -y -q --no-install-recommends /packages/*.deb && "
                         f"useradd --create-home {USER}", environment=UNATTENDED)
        shutil.rmtree(packages)
        shutil.copytree(SOURCE / "samples", self.machine.root / "samples")

    def assert_purged_clean(self, *names):
        self.machine.run(f"apt-get purge -y -q {' '.join(names)}", environment=UNATTENDED)
        self.assertEqual([path for path in self.files() if "quillow" in path.lower()], [])

    def installedPackage(self):
        self.install("quillow")
        self.assertIn("usr/bin/quillow", self.files())
        # As a user who has nothing of the project but its documents.
        self.machine.run("quillow-convert /samples/*.rtf -o out", USER)
        self.assert_samples_converted(self.home(USER) / "out")
        self.assertEqual(self.machine.run("quillow --version", USER, stdout=subprocess.PIPE, text=True,
                                          environment={"QT_QPA_PLATFORM": "offscreen"}).stdout, "Quillow 1.5.1\n")
        self.check_window()
        self.assert_purged_clean("quillow")

    def installedLibraries(self):
        names = ["quillow", "libquillowtext1", "libquillowtext-dev", "python3-quillow"]
        self.install(*names)
        self.machine.run("apt-get install -y -q --no-install-recommends gcc libc6-dev pkg-config", environment=UNATTENDED)
        shutil.copy(SOURCE / "examples/c/textof.c", self.machine.root)
        expected = (SOURCE / "samples/expected/offer-german.rtf.txt").read_text(encoding="utf-8")

        def output(script):
            return self.machine.run(script, USER, stdout=subprocess.PIPE, encoding="utf-8").stdout

        self.assertEqual(output("cc /textof.c $(pkg-config --cflags --libs quillowtext) -o textof && "
                                "./textof /samples/offer-german.rtf"), output("quillow-convert --links /samples/offer-german.rtf"))
        for reader in ("quillow", "quillow.Pool(workers=1)"):
            self.assertEqual(output("python3 -X utf8 -c 'import quillow, sys; sys.stdout.write("
                                    f'{reader}.extract("/samples/offer-german.rtf").text)\''), expected, reader)
        self.assert_purged_clean(*names)

    def files(self):
        """All files of the machine but those of its users."""
        told = output_of("find", self.machine.root, "-xdev", "(", "-path", self.machine.root / "home", "-o", "-path",
                         self.machine.root / "root", ")", "-prune", "-o", "-printf", "%P\\n")
        return set(told.splitlines())

    def check_window(self):
        """The window of the installed program, on a screen of this machine, converts the document that it is given."""
        settings = self.home(USER) / ".config/org.quillow.Quillow/defaults.ini"
        texts = self.home(USER) / "texts"
        texts.mkdir()
        run(sys.executable, SOURCE / "tests/gui/presets.py", f"/home/{USER}/texts", env={
            **os.environ, "HOME": str(self.home(USER)), "XDG_CONFIG_HOME": str(settings.parents[1])})
        self.machine.run(f"chown -R {USER}: /home/{USER}")
        server = subprocess.Popen(["Xvfb", "-displayfd", "1", "-nolisten", "tcp"], stdout=subprocess.PIPE, text=True,
                                  stderr=subprocess.DEVNULL)
        try:
            display = ":" + server.stdout.readline().strip()
            self.machine.run(
                f"quillow /samples/offer-german.rtf & program=$!; for i in $(seq {WINDOW_PATIENCE_SECONDS * 10}); do "
                "[ -s texts/offer-german.txt ] && break; sleep 0.1; done; kill $program; wait $program", USER,
                environment={"DISPLAY": display}, binds=["/tmp/.X11-unix"])
        finally:
            server.terminate()
            server.communicate()
        self.assertEqual((texts / "offer-german.txt").read_bytes(), (SOURCE / "samples/expected/offer-german.rtf.txt").read_bytes())


if __name__ == "__main__":
    unittest.main(verbosity=2)

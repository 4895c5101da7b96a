"""Tests of the installation and of the packages. A case whose tool is not on this machine is skipped."""
import gzip
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(os.environ["QUILLOW_SOURCE"])
BUILD = pathlib.Path(os.environ["QUILLOW_BUILD"])
PACKAGING = SOURCE / "packaging"
ID = "org.quillow.Quillow"
SKIPPED = 77


def run(*command, **options):
    return subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)


class Packaging(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="quillow-packaging-")
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)

    def needs(self, tool):
        if not shutil.which(tool):
            self.skipTest(f"no {tool} on this machine")

    def passes(self, *command, **options):
        done = run(*command, **options)
        self.assertEqual(done.returncode, 0, done.stdout)
        return done.stdout

    def install(self, *options):
        self.passes(os.environ["CMAKE"], "--install", BUILD, "--component", "quillow", *options)

    def files_below(self, folder):
        return sorted(str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir())

    def assert_converts(self, prefix):
        """The installed command line finds its worker and converts; both work without the build folder's programs."""
        sample = SOURCE / "samples/poem-greek.htm"
        done = subprocess.run([prefix / "bin/quillow-convert", sample], capture_output=True)
        self.assertEqual(done.stderr, b"")
        self.assertEqual(done.stdout, (SOURCE / "samples/expected/poem-greek.htm.txt").read_bytes())

    def desktopFile(self):
        self.needs("desktop-file-validate")
        self.assertEqual(self.passes("desktop-file-validate", PACKAGING / f"{ID}.desktop"), "")

    def metainfo(self):
        self.needs("appstreamcli")
        # A tree as it is installed lets the validator see the launchable too.
        self.install("--prefix", self.folder)
        told = self.passes("appstreamcli", "validate", "--pedantic", "--no-net", self.folder / f"share/metainfo/{ID}.metainfo.xml")
        self.assertIn("Validation was successful", told)
        self.passes("appstreamcli", "validate-tree", "--no-net", self.folder)
        newest = re.search(r'<release version="([^"]+)"', (PACKAGING / f"{ID}.metainfo.xml.in").read_text())[1]
        version = re.search(r"project\(quillow VERSION (\S+)", (SOURCE / "CMakeLists.txt").read_text())[1]
        self.assertEqual(newest, version)

    def mimeType(self):
        self.needs("update-mime-database")
        packages = self.folder / "mime/packages"
        packages.mkdir(parents=True)
        shutil.copy(PACKAGING / f"{ID}.mime.xml", packages / f"{ID}.xml")
        told = self.passes("update-mime-database", self.folder / "mime", env={**os.environ, "XDG_DATA_HOME": str(self.folder)})
        self.assertEqual(told, "")
        self.assertIn("application/x-rtfd:*.rtfd\n", (self.folder / "mime/globs2").read_text())
        handled = re.search("MimeType=(.*)", (PACKAGING / f"{ID}.desktop").read_text())[1]
        self.assertIn("application/x-rtfd;", handled)

    def icons(self):
        self.needs("rsvg-convert")
        self.needs("compare")
        self.passes(PACKAGING / "icons/make.sh", self.folder)
        drawn = self.files_below(self.folder)
        self.assertEqual(drawn, sorted(path.name for path in (PACKAGING / "icons").glob("*.png")))
        for name in drawn:
            # Releases of the drawing library differ by single shades.
            self.passes("compare", "-metric", "AE", "-fuzz", "3%", self.folder / name, PACKAGING / "icons" / name, "null:")

    def manPage(self):
        self.needs("groff")
        page = BUILD / "share/man/man1/quillow.1"
        done = subprocess.run(["groff", "-man", "-ww", "-Tutf8", page], capture_output=True, text=True)
        self.assertEqual(done.stderr, "")
        self.assertIn("convert documents to plain text in a window", done.stdout)

    def installation(self):
        self.install("--prefix", self.folder)
        expected = (SOURCE / "tests/packaging/installed.txt").read_text().splitlines()
        self.assertEqual(self.files_below(self.folder), sorted(expected))
        self.assert_converts(self.folder)

    def debianPackage(self):
        self.needs("dpkg-shlibdeps")
        made = self.folder / "made"
        self.passes(os.environ["CPACK"], "-G", "DEB", "-B", made, cwd=BUILD)
        package, = made.glob("*.deb")
        self.assertRegex(package.name, r"^quillow_1\.5\.1_\w+\.deb$")
        field = lambda name: self.passes("dpkg-deb", "--field", package, name).strip()
        self.assertRegex(field("Depends"), r"libqt6widgets6 \(>= ")
        self.assertRegex(field("Depends"), r"libc6 \(>= ")
        self.assertIn("libnettle8", field("Depends"))
        self.assertEqual(field("Package"), "quillow")
        root = self.folder / "root"
        self.passes("dpkg-deb", "--extract", package, root)
        compressed = {"share/man/man1/quillow.1", "share/man/man1/quillow-convert.1"}
        expected = (SOURCE / "tests/packaging/installed.txt").read_text().splitlines()
        expected = [name + ".gz" if name in compressed else name for name in expected] + ["share/doc/quillow/changelog.gz"]
        self.assertEqual(self.files_below(root / "usr"), sorted(expected))
        self.assertEqual([path.name for path in root.iterdir()], ["usr"])
        with gzip.open(root / "usr/share/doc/quillow/changelog.gz", "rt") as log:
            self.assertTrue(log.readline().startswith("quillow (1.5.1) "))
        self.assert_converts(root / "usr")
        self.needs("lintian")
        # Only ./package links zlib as a shared library, and looks for this tag too.
        told = self.passes("lintian", "--fail-on", "error,warning", "--suppress-tags", "embedded-library", package)
        self.assertNotRegex(told, r"(?m)^[EW]: ")

    def flatpakManifest(self):
        self.needs("flatpak-builder")
        manifest = PACKAGING / f"flatpak/{ID}.yml"
        shown = json.loads(self.passes("flatpak-builder", "--show-manifest", manifest, cwd=self.folder))
        self.assertEqual(shown["id"], ID)
        self.assertEqual(shown["command"], "quillow")
        # A sandbox, files that the user chose (by portals, thus no --filesystem), and the network; a window; its own data folder.
        self.assertEqual(shown["finish-args"], ["--share=network", "--socket=wayland", "--socket=fallback-x11", "--share=ipc",
                                                "--persist=Library"])
        self.assertEqual(shown["modules"][-1]["name"], "quillow")


if __name__ == "__main__":
    result = unittest.main(exit=False, argv=sys.argv).result
    for _, reason in result.skipped:
        print("skipped:", reason)
    sys.exit(SKIPPED if result.skipped and result.wasSuccessful() else not result.wasSuccessful())

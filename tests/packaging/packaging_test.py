"""Tests of the installation and of the packages. A case whose tool is not on this machine is skipped."""
import gzip
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import sysconfig
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
        self.assertEqual(self.files_below(self.folder), sorted(self.pinned("installed")))
        self.assert_converts(self.folder)

    def make_packages(self, *components):
        """Makes the Debian packages of these components; all are unpacked into one folder. Returns the packages and that folder."""
        self.needs("dpkg-shlibdeps")
        made = self.folder / "made"
        self.passes(os.environ["CPACK"], "-G", "DEB", "-D", f"CPACK_COMPONENTS_ALL={';'.join(components)}", "-B", made, cwd=BUILD)
        packages = {path.name.split("_")[0]: path for path in made.glob("*.deb")}
        self.assertEqual(len(packages), len(components))
        root = self.folder / "root"
        for name, package in packages.items():
            self.assertRegex(package.name, r"^[a-z0-9-]+_1\.5\.1_\w+\.deb$")
            self.assertEqual(self.field(package, "Package"), name)
            self.passes("dpkg-deb", "--extract", package, root)
            documents = root / "usr/share/doc" / name
            self.assertEqual((documents / "copyright").read_bytes(), (PACKAGING / "debian/copyright").read_bytes())
            with gzip.open(documents / "changelog.gz", "rt") as log:
                self.assertTrue(log.readline().startswith("quillow (1.5.1) "))
        self.assertEqual([path.name for path in root.iterdir()], ["usr"])
        return packages, root / "usr"

    def field(self, package, name):
        return self.passes("dpkg-deb", "--field", package, name).strip()

    def assert_has_files(self, package, expected):
        contents = self.folder / "contents"
        self.passes("dpkg-deb", "--extract", package, contents)
        self.assertEqual(self.files_below(contents / "usr"), sorted(expected))
        shutil.rmtree(contents)

    def assert_has_control_files(self, package, *expected):
        control = self.folder / "control"
        self.passes("dpkg-deb", "--control", package, control)
        self.assertEqual(self.files_below(control), sorted(["control", "md5sums", *expected]))
        shutil.rmtree(control)

    def pinned(self, name):
        """The files that tests/packaging/NAME.txt lists, as this build names them."""
        named = {"{libdir}": os.environ["QUILLOW_LIBDIR"], "{build}": os.environ["QUILLOW_BUILD_TYPE"].lower(),
                 "{extension}": sysconfig.get_config_var("EXT_SUFFIX")}
        text = (SOURCE / f"tests/packaging/{name}.txt").read_text()
        for placeholder, value in named.items():
            text = text.replace(placeholder, value)
        return text.splitlines()

    def assert_lintian_is_silent(self, packages):
        self.needs("lintian")
        # Only ./package links zlib as a shared library and has the architecture's library folder; it looks for these tags too.
        tags = "embedded-library,pkg-config-unavailable-for-cross-compilation"
        told = self.passes("lintian", "--fail-on", "error,warning", "--suppress-tags", tags, *packages.values())
        self.assertNotRegex(told, r"(?m)^[EW]: ")

    def debianPackage(self):
        packages, usr = self.make_packages("quillow")
        depends = self.field(packages["quillow"], "Depends")
        self.assertRegex(depends, r"libqt6widgets6 \(>= ")
        self.assertRegex(depends, r"libc6 \(>= ")
        self.assertIn("libnettle8", depends)
        compressed = {"share/man/man1/quillow.1", "share/man/man1/quillow-convert.1"}
        expected = [name + ".gz" if name in compressed else name for name in self.pinned("installed")]
        self.assert_has_files(packages["quillow"], expected + ["share/doc/quillow/changelog.gz"])
        self.assert_has_control_files(packages["quillow"])
        self.assert_converts(usr)
        self.assert_lintian_is_silent(packages)

    def debianLibrary(self):
        packages, usr = self.make_packages("library", "library-development")
        library, development = packages["libquillowtext1"], packages["libquillowtext-dev"]
        self.assertRegex(self.field(library, "Depends"), r"libnettle8, .*libc6 \(>= ")
        self.assertEqual(self.field(development, "Depends"), "libquillowtext1 (= 1.5.1)")
        self.assert_has_files(library, self.pinned("library"))
        self.assert_has_files(development, self.pinned("library-development"))
        # No scripts: the trigger runs ldconfig.
        self.assert_has_control_files(library, "shlibs", "symbols", "triggers")
        self.assert_has_control_files(development)
        # The list of symbols has what the library exports, no more and no less. Only in a later version is a lost one missed.
        folder = usr / os.environ["QUILLOW_LIBDIR"]
        self.passes("dpkg-gensymbols", "-plibquillowtext1", "-v9", "-c4", f"-I{PACKAGING}/debian/library/symbols",
                    f"-e{folder}/libquillowtext.so.1", "-O")
        environment = {**os.environ, "PKG_CONFIG_PATH": f"{folder}/pkgconfig", "LD_LIBRARY_PATH": str(folder)}
        flags = self.passes("pkg-config", "--cflags", "--libs", "quillowtext", env=environment).split()
        program = self.folder / "textof"
        self.passes("cc", SOURCE / "examples/c/textof.c", *flags, "-o", program)
        self.assertEqual(self.passes(program, SOURCE / "samples/poem-greek.htm", env=environment),
                         (SOURCE / "samples/expected/poem-greek.htm.txt").read_text())
        self.assert_lintian_is_silent(packages)

    def debianPython(self):
        packages, usr = self.make_packages("python")
        package = packages["python3-quillow"]
        major, minor = sys.version_info[:2]
        self.assertTrue(self.field(package, "Depends").startswith(
            f"python3 (>= {major}.{minor}~), python3 (<< {major}.{minor + 1}), quillow (= 1.5.1), libnettle8, libc6 (>= "))
        self.assert_has_files(package, self.pinned("python"))
        # They compile the module when it is installed, and remove what was compiled.
        self.assert_has_control_files(package, "postinst", "prerm")
        # The pool's worker is in the package that this one depends on.
        self.install("--prefix", usr)
        sample = SOURCE / "samples/poem-greek.htm"
        program = ("import quillow, sys\nwith quillow.Pool(workers=1) as pool:\n"
                   "    print(quillow.__file__, quillow.extract(sys.argv[1]).text == pool.extract(sys.argv[1]).text != None)")
        modules = usr / "lib/python3/dist-packages"
        told = self.passes(sys.executable, "-B", "-c", program, sample, env={**os.environ, "PYTHONPATH": str(modules)})
        self.assertEqual(told, f"{modules}/quillow/__init__.py True\n")
        self.assert_lintian_is_silent(packages)

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

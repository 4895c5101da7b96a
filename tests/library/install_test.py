#!/usr/bin/env python3
"""install_test.py SOURCE BUILD: installs the library into a folder, then builds examples/c against it, by pkg-config and by
CMake, and runs what was built."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

SOURCE, BUILD = map(pathlib.Path, sys.argv[1:3])
EXAMPLE = SOURCE / "examples/c"
EXPORTED = {"quillow_extract", "quillow_free", "quillow_reason_name", "quillow_version"}


def output_of(*command, **settings):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, **settings)
    if done.returncode != 0:
        raise AssertionError(f"{command}: {done.stdout}{done.stderr}")
    return done.stdout


class Installed(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.folder = pathlib.Path(cls.scratch.name)
        prefix = cls.folder / "prefix"
        for component in ("library", "library-development"):
            output_of("cmake", "--install", BUILD, "--prefix", prefix, "--component", component)
        # Where the files were first must not matter.
        cls.prefix = prefix.rename(cls.folder / "moved")
        cls.library = next(cls.prefix.rglob("libquillowtext.so"))
        cls.environment = {**os.environ, "PKG_CONFIG_PATH": str(cls.library.parent / "pkgconfig"),
                           "LD_LIBRARY_PATH": str(cls.library.parent)}

    @classmethod
    def tearDownClass(cls):
        cls.scratch.cleanup()

    def expect_text_of_a_sample(self, program):
        text = output_of(program, SOURCE / "samples/kettle-manual.html", env=self.environment)
        convert = output_of(BUILD / "bin/quillow-convert", "--links", SOURCE / "samples/kettle-manual.html")
        self.assertEqual(text, convert)
        failing = subprocess.run([program, __file__], capture_output=True, text=True, env=self.environment)
        self.assertEqual((failing.returncode, failing.stdout), (1, ""))
        self.assertIn("wrong-type", failing.stderr)

    def flags(self):
        return output_of("pkg-config", "--cflags", "--libs", "quillowtext", env=self.environment).split()

    def test_the_example_builds_by_pkg_config_as_old_and_new_c(self):
        for standard in ("-std=c99", "-std=c17"):
            program = self.folder / "textof"
            output_of("cc", standard, "-pedantic", "-Wall", "-Wextra", "-Werror", EXAMPLE / "textof.c", *self.flags(), "-o", program)
            self.expect_text_of_a_sample(program)

    def test_the_example_builds_by_cmake(self):
        build = self.folder / "build"
        output_of("cmake", "-S", EXAMPLE, "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}")
        output_of("cmake", "--build", build)
        self.expect_text_of_a_sample(build / "textof")

    def test_the_header_serves_cpp(self):
        source = self.folder / "program.cpp"
        source.write_text("#include <quillowtext.h>\nint main() { quillow_free(quillow_extract(nullptr, 0, nullptr)); }\n")
        output_of("c++", "-std=c++11", "-pedantic", "-Wall", "-Wextra", "-Werror", source, *self.flags(), "-o", self.folder / "program")
        output_of(self.folder / "program", env=self.environment)

    def test_the_versions_agree(self):
        self.assertEqual(output_of("pkg-config", "--modversion", "quillowtext", env=self.environment).strip(),
                         output_of(BUILD / "bin/quillow-convert", "--version").split()[-1])

    def test_nothing_is_exported_but_the_functions_of_the_header_with_their_version(self):
        lines = output_of("nm", "-D", "--defined-only", "--with-symbol-versions", self.library).splitlines()
        names = {line.split()[-1] for line in lines if line.split()[-2] != "A"}
        self.assertEqual(names, {f"{name}@@QUILLOWTEXT_1" for name in EXPORTED})

    def test_the_allocator_of_the_program_is_left_alone(self):
        needed = output_of("nm", "-D", "--undefined-only", self.library)
        self.assertIn(" _Znwm", needed)  # operator new is the program's
        self.assertNotIn("mallopt", needed)

    def test_it_is_loaded_and_unloaded_again_and_again(self):
        source = self.folder / "loader.c"
        source.write_text(f"""
#include <dlfcn.h>
#include <stddef.h>
int main(void) {{
    for (int i = 0; i < 50; ++i) {{
        void *library = dlopen("{self.library}", RTLD_NOW);
        const void *(*extract)(const char *, size_t, const void *);
        void (*release)(const void *);
        if (library == NULL) return 1;
        *(void **)&extract = dlsym(library, "quillow_extract");
        *(void **)&release = dlsym(library, "quillow_free");
        release(extract("{{\\\\rtf1 one}}", 11, NULL));
        if (dlclose(library) != 0) return 1;
    }}
    return 0;
}}
""")
        output_of("cc", source, "-o", self.folder / "loader")
        output_of(self.folder / "loader")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])

#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Plants one fault of each kind into a copy of the tree and expects tools/check_layers to report each.

check_layers_test.py <root of the tree>
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SOURCE = pathlib.Path(sys.argv.pop(1)).resolve()


class CheckLayersTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.place = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.place.name)
        for top in ("velaforge", "apps", "examples", "templates"):
            if (SOURCE / top).is_dir():
                shutil.copytree(SOURCE / top, cls.root / top)
        (cls.root / "cmake").mkdir()
        shutil.copy(SOURCE / "cmake" / "VelaforgePackages.cmake", cls.root / "cmake")
        cls.script = cls.root / "check_layers"
        shutil.copy(SOURCE / "tools" / "check_layers", cls.script)

    @classmethod
    def tearDownClass(cls):
        cls.place.cleanup()

    def run_script(self):
        done = subprocess.run([sys.executable, str(self.script), str(self.root)], capture_output=True, text=True)
        self.assertEqual("", done.stderr)
        return done.returncode, done.stdout

    def add(self, path, text):
        """Appends to a file, or makes it, until the end of the test."""
        file = self.root / path
        before = file.read_bytes() if file.exists() else None
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text((before.decode() if before else "") + "\n" + text + "\n", encoding="utf-8")
        self.addCleanup(lambda: file.unlink() if before is None else file.write_bytes(before))
        return len(file.read_text(encoding="utf-8").splitlines())

    def expect_faults(self, *planted):
        """Plants lines, each given as (path, text, message), expects one fault at each, and takes the lines away again."""
        expected = [(f"{path}:{self.add(path, text)}: ", text, message) for path, text, message in planted]
        status, out = self.run_script()
        self.doCleanups()
        self.assertEqual(1, status)
        lines = out.splitlines()
        for where, text, message in expected:
            self.assertEqual(1, sum(line.startswith(where) and message in line for line in lines),
                             f"{where}{text} must be told as: {message}\n{out}")
        self.assertEqual(len(expected), len(lines), out)

    def expect_fault_somewhere(self, message, count=1):
        """Expects this fault, and so many in all, of what was planted before."""
        status, out = self.run_script()
        self.assertEqual(1, status)
        self.assertIn(message, out)
        self.assertEqual(count, out.count("\n"), out)

    def test_the_tree_itself_has_no_fault(self):
        status, out = self.run_script()
        self.assertEqual(0, status, out)

    def test_a_folder_that_knows_one_above_it(self):
        self.expect_faults(
            ("velaforge/base/VfString.h", "#include <velaforge/commands/Command.h>",
             "base must not know velaforge/commands/Command.h"),
            ("velaforge/documents/View.cpp", "#include <velaforge/qt/QtApplication.h>",
             "documents must not know velaforge/qt/QtApplication.h"),
            ("velaforge/headless/ImageFile.cpp", "#include <velaforge/qt/QtApplication.h>",
             "headless must not know velaforge/qt/QtApplication.h"),
            ("velaforge/headless/ImageFile.cpp", "#include <apps/viewer/model/ModelDocument.h>",
             "headless must not know apps/viewer/model/ModelDocument.h"),
            ("velaforge/planted/Planted.h", "#include <velaforge/base/VfString.h>", "no rule for the folder planted"))

    def test_a_quoted_include_is_one_like_any_other(self):
        self.expect_faults(
            ("velaforge/base/VfString.h", '#include "velaforge/commands/Command.h"', "base must not know velaforge/commands"),
            ("velaforge/qt/QtApplication.cpp", '#include "velaforge/commands/CommandItemPrivate.h"',
             "qt must do with public headers"))

    def test_an_include_by_way_of_another_folder(self):
        self.expect_faults(*[
            ("velaforge/base/VfString.h", f"#include {name}", "must be written as a path from the include root")
            for name in ('"../commands/Command.h"', "<velaforge/base/../commands/Command.h>", '"./VfObject.h"',
                         '"/usr/include/stdio.h"', '"velaforge//base/VfObject.h"')])

    def test_an_include_that_is_written_unusually(self):
        self.expect_faults(("velaforge/base/VfString.cpp", "#include HEADER", "an include must name its file"), *[
            ("velaforge/base/VfString.cpp", written, "base must not know velaforge/commands/Command.h")
            for written in ("#  include  <velaforge/commands/Command.h>", "%:include <velaforge/commands/Command.h>",
                            "#include/* why */<velaforge/commands/Command.h>", "#import <velaforge/commands/Command.h>",
                            "#include_next <velaforge/commands/Command.h>")])

    def test_a_line_that_continues_the_one_before(self):
        self.add("velaforge/base/VfString.cpp", "#inc\\\nlude <velaforge/commands/Command.h>")
        self.expect_fault_somewhere("base must not know velaforge/commands/Command.h")

    def test_what_stands_in_a_comment_is_no_include(self):
        self.add("velaforge/base/VfString.cpp",
                 "// #include <QString>\n/*\n#include <QString>\n*/\n// a \\\n#include <QString>")
        self.assertEqual(0, self.run_script()[0])

    def test_a_file_of_any_extension_counts(self):
        self.expect_faults(*[
            (f"velaforge/base/Planted.{extension}", "#include <velaforge/commands/Command.h>", "base must not know")
            for extension in ("cc", "cxx", "c", "C", "mm", "hpp", "hh", "inl", "ipp", "inc", "def", "cpp.in", "cu", "none")])

    def test_a_header_may_not_include_what_only_sources_may(self):
        self.expect_faults(*[
            (f"velaforge/dockwindows/{name}", "#include <velaforge/application/Application.h>",
             "dockwindows must not know velaforge/application/Application.h")
            for name in ("DockWindow.h", "Planted.hpp", "Planted.inl")])

    def test_system_headers_that_a_folder_may_not_use(self):
        self.expect_faults(*[
            (path, f"#include <{name}>", f"must not know {name}")
            for path, name in (
                ("velaforge/documents/View.cpp", "osg/GL"), ("velaforge/documents/View.cpp", "QString"),
                ("velaforge/documents/View.cpp", "QtGui/QWindow"), ("velaforge/documents/View.cpp", "unistd.h"),
                ("velaforge/documents/View.cpp", "osg/Camera"), ("velaforge/commands/Command.h", "osgViewer/Viewer"),
                ("velaforge/base/VfString.cpp", "EGL/egl.h"), ("velaforge/qt/QtApplication.cpp", "GL/gl.h"),
                ("velaforge/headless/ImageFile.cpp", "QImage"), ("velaforge/headless/ImageFile.cpp", "xcb/xcb.h"),
                ("apps/viewer/ui/Planted.cpp", "QString"), ("apps/viewer/ui/Planted.cpp", "assimp/scene.h"),
                ("apps/viewer/qt/Planted.cpp", "assimp/scene.h"), ("examples/01_hello/main.cpp", "QLabel"))])

    def test_system_headers_that_nobody_knows(self):
        self.expect_faults(*[
            ("velaforge/qt/QtApplication.cpp", f"#include <{name}>", f"{name} is neither in the tree nor a system header")
            for name in ("gtk/gtk.h", "X11/Xlib.h", "qstring.h", "osgQOpenGL/osgQOpenGLWidget",
                         "velaforge/base/Missing.h", "boost/any.hpp")])

    def test_the_json_library_outside_the_settings_store(self):
        self.expect_faults(
            ("velaforge/base/Settings.cpp", "#include <nlohmann/json.hpp>", "the JSON library belongs"),
            ("velaforge/base/SettingsDocument.h", "#include <nlohmann/json_fwd.hpp>", "the JSON library belongs"),
            ("apps/viewer/ui/Planted.cpp", "#include <nlohmann/json.hpp>", "must not know nlohmann/json.hpp"))

    def test_programs_and_examples_do_with_what_is_installed(self):
        hidden = ("velaforge/base/PosixFiles.h", "velaforge/base/SettingsDocument.h",
                  next((self.root / "velaforge/toolkit").glob("*.h")).relative_to(self.root).as_posix(),
                  next((self.root / "velaforge/qt/internal").glob("*.h")).relative_to(self.root).as_posix())
        self.expect_faults(
            ("velaforge/headless/ImageFile.cpp", "#include <velaforge/base/PosixFiles.h>",
             "headless must do with installed headers, not velaforge/base/PosixFiles.h"),
            ("apps/viewer/ui/Planted.cpp", "#include <velaforge/commands/CommandItemPrivate.h>",
             "apps must do with public headers, not velaforge/commands/CommandItemPrivate.h"),
            *[(path, f"#include <{name}>", f"must do with installed headers, not {name}")
              for path in ("apps/viewer/ui/Planted.cpp", "examples/02_notebook/Note.cpp", "templates/planted/main.cpp")
              for name in hidden])

    def test_what_programs_link_knows_nothing_that_parses_files(self):
        for place in ("ReadJob.cpp", "ReadJob.h", "internal/SceneArrival.cpp", "records/ObjFormat.cpp"):
            path = f"velaforge/formats/{place}"
            folder = path.rpartition("/")[0]
            for target in ("velaforge/formats/readers/ObjReader.h", "velaforge/formats/writers/ObjWriter.h"):
                self.expect_faults((path, f"#include <{target}>", f"{folder} must not know {target}"))
        self.expect_faults(("velaforge/formats/readers/ObjReader.cpp", "#include <velaforge/formats/readers/assimp/GltfFile.h>",
                            "velaforge/formats/readers must not know velaforge/formats/readers/assimp/GltfFile.h"))

    def test_one_example_that_knows_another(self):
        self.expect_faults(("examples/01_hello/main.cpp", "#include <examples/02_notebook/Note.h>",
                            "examples/01_hello must not know examples/02_notebook/Note.h"))

    def test_a_ring_of_headers(self):
        for path in ("velaforge/base/PlantedA.h", "velaforge/base/PlantedB.h", "velaforge/base/PlantedC.hpp"):
            following = {"A.h": "B.h", "B.h": "C.hpp", "C.hpp": "A.h"}[path.rpartition("Planted")[2]]
            self.add(path, f"#include <velaforge/base/Planted{following}>")
        self.expect_fault_somewhere("headers include each other in a ring: velaforge/base/PlantedA.h, "
                                    "velaforge/base/PlantedB.h, velaforge/base/PlantedC.hpp")
        self.doCleanups()
        self.add("apps/viewer/ui/PlantedA.h", '#include "ui/PlantedB.h"')
        self.add("apps/viewer/ui/PlantedB.h", '#include "PlantedA.h"')
        self.expect_fault_somewhere("headers include each other in a ring: apps/viewer/ui/PlantedA.h", count=2)

    def test_a_ring_of_folders(self):
        # Each of the two is allowed by itself.
        self.add("velaforge/shell/StatusBar.cpp", "#include <velaforge/documents/Document.h>")
        self.assertEqual(0, self.run_script()[0])
        self.add("velaforge/application/Application.cpp", "#include <velaforge/shell/StatusBar.h>")
        self.expect_fault_somewhere("a ring that is not named as an exception: application, documents, shell")

    def test_a_ring_of_sources_in_a_program(self):
        self.add("apps/viewer/ui/PlantedA.h", "")
        self.add("apps/viewer/ui/PlantedB.h", "")
        self.add("apps/viewer/ui/PlantedA.cpp", '#include "ui/PlantedB.h"')
        self.add("apps/viewer/ui/PlantedB.cpp", '#include "ui/PlantedA.h"')
        self.expect_fault_somewhere("sources of viewer include each other in a ring that is not named as an exception: "
                                    "apps/viewer/ui/PlantedA, apps/viewer/ui/PlantedB")

    def test_a_named_ring_that_is_gone(self):
        text = self.script.read_text(encoding="utf-8")
        self.addCleanup(self.script.write_text, text, encoding="utf-8")
        self.script.write_text(text.replace("FOLDER_RINGS = [", 'FOLDER_RINGS = [{"headless", "qt"}, ', 1), encoding="utf-8")
        self.expect_fault_somewhere("no longer a ring of folders below velaforge: headless, qt")


if __name__ == "__main__":
    unittest.main()

"""mirelo calc with a person's own LibreOffice: the extension put in and taken out, and files opened in a window."""

import os
import signal
import subprocess
import time
import unittest

from command_case import MIRELO, PATIENCE, CommandCase
from office import OFFICE

NOBODY = 65534


class Install(CommandCase):
    def setUp(self):
        super().setUp()
        self.person = []
        if os.geteuid() == 0:
            self.person = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups"]
            for folder in (self.home, self.home / "tmp"):
                os.chown(folder, NOBODY, NOBODY)

    def told(self, *words, **more):
        result = subprocess.run(words, env={**self.environment, **more}, cwd=self.home, capture_output=True, text=True)
        self.assertEqual(result.returncode, 0, result.stderr)
        return result.stdout

    def extensions(self):
        return self.told(*self.person, OFFICE / "program" / "unopkg", "list")

    def test_is_for_a_person_alone_where_that_is_not_root(self):
        calc = (*self.person, MIRELO, "calc")
        self.assertEqual(self.told(*calc, "--remove"), "The extension is not installed for you.\n")
        for _ in ("first", "anew"):
            self.assertEqual(
                self.told(*calc, "--install"), "The extension is installed for you. Start LibreOffice anew where it runs.\n"
            )
            self.assertEqual(self.extensions().count("Identifier: mirelo\n"), 1)
        self.assertEqual(
            self.told(*calc, "--remove"), "The extension is removed for you. Start LibreOffice anew where it runs.\n"
        )
        self.assertNotIn("Identifier: mirelo\n", self.extensions())

    def test_is_for_all_where_root_asks_for_it(self):
        if os.geteuid() != 0:
            self.skipTest("only root installs for all")
        programs = self.home / "office" / "program"
        place = self.home / "office" / "share" / "extensions"
        for folder in (programs, place):
            folder.mkdir(parents=True)
        for name in ("soffice", "soffice.bin", "libsclo.so"):
            (programs / name).touch()
        path = {"PATH": f"{programs}:{self.environment['PATH']}"}
        said = self.told(MIRELO, "calc", "--install", **path)
        self.assertIn(f"The extension is installed for all users, in {place}/mirelo", said)
        self.assertIn("libmirelo.uno.so", os.listdir(place / "mirelo"))
        said = self.told(MIRELO, "calc", "--remove", **path)
        self.assertIn("The extension is removed for all users", said)
        self.assertEqual(os.listdir(place), [])

    # An office that is not headless shows its windows on no screen here.
    def test_opens_files_in_one_office_which_the_terminal_does_not_end_at_once(self):
        code, _, err = self.end(self.start("calc", "three.ods", SAL_USE_VCLPLUGIN="svp"))
        self.assertEqual(code, 1)
        self.assertIn("There is no file three.ods. Without a file mirelo calc opens a new spreadsheet", err)
        self.write_document("new.fods")
        first = self.start("calc", "new.fods", SAL_USE_VCLPLUGIN="svp")
        self.wait_for(first, "The extension is lent to this LibreOffice alone; mirelo calc --install")
        self.wait_for_file(".~lock.new.fods#")
        self.write_document("other.fods")
        second = self.start("calc", "other.fods", SAL_USE_VCLPLUGIN="svp")
        self.wait_for_file(".~lock.other.fods#")
        _, err = second.communicate(timeout=PATIENCE)
        self.assertEqual(second.returncode, 0, err)
        first.send_signal(signal.SIGINT)
        self.wait_for(first, "LibreOffice goes on: close its windows. Ctrl-C once more kills it")
        self.assertIsNone(first.poll())
        time.sleep(0.04)  # no person is quicker, and what comes sooner is the same wish told twice
        first.send_signal(signal.SIGINT)
        code, _, _ = self.end(first)
        self.assertEqual(code, 1)

    def write_document(self, name):
        (self.home / name).write_text(
            '<?xml version="1.0" encoding="UTF-8"?><office:document'
            ' xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"'
            ' xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" office:version="1.3"'
            ' office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:body><office:spreadsheet>'
            '<table:table table:name="Mine"/></office:spreadsheet></office:body></office:document>'
        )

    def wait_for_file(self, name):
        until = time.monotonic() + PATIENCE
        while not (self.home / name).exists():
            self.assertLess(time.monotonic(), until, f"{name} is not there")
            time.sleep(0.05)


if __name__ == "__main__":
    unittest.main()

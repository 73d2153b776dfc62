"""Manual pages, completions and the menu's entry, as man, shells and desktops read them."""

import shutil
import unittest
import xml.etree.ElementTree

from support import InstalledCase, run

PROGRAMS = ("mirelo", "mirelo-windows", "quotetracker")

# Calls the function that completes the program, as readline does, and shows what it offers.
COMPLETE_IN_BASH = """
source "$1"; shift
COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
"$(complete -p "$1" | sed 's/.*-F \\([^ ]*\\).*/\\1/')"
printf '%s\\n' "${COMPREPLY[@]}"
"""


def needs(tool):
    return unittest.skipUnless(shutil.which(tool), f"{tool} is not installed")


class ManualPages(InstalledCase):
    def page(self, program):
        return self.prefix / "share" / "man" / "man1" / f"{program}.1"

    @needs("man")
    def test_are_read_without_warnings(self):
        for program in PROGRAMS:
            with self.subTest(program):
                man = ["man", "--warnings", "--encoding=UTF-8", "--locale=C.UTF-8", "-l", self.page(program)]
                text = self.run_here("sh", "-c", 'exec "$@" 2>&1', "sh", *man)
                self.assertNotIn(": warning", text)
                self.assertIn(f"{program.upper()}(1)", text)
                self.assertIn(f"{program} - ", text)

    def test_tell_of_each_option_that_help_shows(self):
        for program in ("mirelo", "quotetracker"):
            with self.subTest(program):
                page = self.page(program).read_text().replace("\\", "")
                help_text = self.run_here(self.programs / program, "--help")
                options = {word.strip(",") for word in help_text.split() if word.startswith("--")}
                self.assertGreater(len(options), 1)
                self.assertEqual([option for option in options if option not in page], [])


class Bash(InstalledCase):
    def offers(self, *words):
        script = self.prefix / "share" / "bash-completion" / "completions" / words[0]
        return self.run_here("bash", "-c", COMPLETE_IN_BASH, "bash", script, *words).split()

    def test_completes_commands(self):
        self.assertEqual(self.offers("mirelo", "st"), ["stream"])
        self.assertEqual(self.offers("mirelo", "settings", "exp"), ["export"])

    def test_completes_options_of_the_chosen_command(self):
        self.assertEqual(self.offers("mirelo", "quotes", "MSFT", "--wa"), ["--watch"])
        self.assertEqual(self.offers("mirelo", "stream", "--wa"), [])
        self.assertEqual(self.offers("quotetracker", "--chunking", "whole", "--exit"), ["--exit-with-parent"])
        self.assertEqual(self.offers("mirelo-windows", "dialog", "--work"), ["--workbook"])

    def test_completes_options_of_the_program_behind_its_commands(self):
        self.assertEqual(self.offers("mirelo", "run", "--reg"), ["--registry"])

    def test_completes_the_names_of_settings(self):
        self.assertEqual(self.offers("mirelo", "settings", "set", "HTTP"), ["HTTPPort"])

    def test_leaves_values_to_the_names_of_files(self):
        self.assertEqual(self.offers("mirelo", "dialog", "--workbook", ""), [])
        self.assertEqual(self.offers("mirelo", "show", ""), [])
        self.assertEqual(self.offers("mirelo", "show", "quotes.xlsx", "--li"), ["--list"])

    def test_is_not_led_astray_by_a_value_that_is_named_like_a_command(self):
        self.assertEqual(self.offers("mirelo", "quotes", "stream", "--wa"), ["--watch"])


# What zsh would offer, by stand-ins for the functions that do so in its line editor.
COMPLETE_IN_ZSH = r"""
_describe() { [[ $1 == -o ]] && shift; local -a offers=("${(@P)2}"); print -l -- "${(@)offers}" }
_files() { print -- FILES }
fpath=($1 $fpath); autoload -Uz _$2; shift
words=("$@") CURRENT=$#
_$1
"""


@needs("zsh")
class Zsh(InstalledCase):
    def offers(self, *words):
        folder = self.prefix / "share" / "zsh" / "vendor-completions"
        result = self.run_here("zsh", "-f", "-c", COMPLETE_IN_ZSH + "true", "zsh", folder, *words)
        return [offer.split(":")[0] for offer in result.splitlines() if offer.startswith(words[-1]) or offer == "FILES"]

    def test_completes_commands(self):
        self.assertEqual(self.offers("mirelo", "st"), ["stream"])
        self.assertEqual(self.offers("mirelo", "settings", "exp"), ["export"])
        self.assertEqual(self.offers("mirelo", "--v"), ["--version"])

    def test_completes_options_of_the_chosen_command(self):
        self.assertEqual(self.offers("mirelo", "run", "--als"), ["--also"])
        self.assertEqual(self.offers("mirelo", "stream", "--als"), [])
        self.assertEqual(self.offers("mirelo", "run", "--reg"), ["--registry"])
        self.assertEqual(self.offers("mirelo-windows", "dialog", "--work"), ["--workbook"])

    def test_leaves_values_and_files_to_the_shell(self):
        self.assertEqual(self.offers("mirelo", "run", "--also", "q"), ["FILES"])
        self.assertEqual(self.offers("mirelo", "export", "q"), ["FILES"])

    def test_completes_the_names_of_settings(self):
        self.assertEqual(self.offers("mirelo", "settings", "set", "HTTP"), ["HTTPPort"])


@needs("fish")
class Fish(InstalledCase):
    def offers(self, line):
        folder = self.prefix / "share" / "fish" / "vendor_completions.d"
        script = f'source {folder}/{line.split()[0]}.fish; complete -C "{line}"'
        return [offer.split("\t")[0] for offer in self.run_here("fish", "--no-config", "-c", script).splitlines()]

    def test_completes_commands(self):
        self.assertEqual(self.offers("mirelo st"), ["stream"])
        self.assertIn("export", self.offers("mirelo settings "))
        self.assertNotIn("stream", self.offers("mirelo settings "))

    def test_completes_options_of_the_chosen_command(self):
        self.assertEqual(self.offers("mirelo quotes MSFT --wa"), ["--watch"])
        self.assertEqual(self.offers("mirelo stream --wa"), [])
        self.assertEqual(self.offers("mirelo run --reg"), ["--registry"])

    def test_completes_the_names_of_settings(self):
        self.assertEqual(self.offers("mirelo settings set HTTP"), ["HTTPPort"])


class MenuEntry(InstalledCase):
    def entry(self):
        return self.prefix / "share" / "applications" / "mirelo.desktop"

    @needs("desktop-file-validate")
    def test_is_as_desktops_want_it(self):
        self.assertEqual(run("desktop-file-validate", self.entry()), "")

    def test_starts_a_command_that_there_is(self):
        lines = self.entry().read_text().splitlines()
        program, *arguments = next(line for line in lines if line.startswith("Exec="))[len("Exec=") :].split()
        self.run_here(self.programs / program, *arguments, "--help")

    def test_takes_the_workbook_that_a_file_manager_hands_over(self):
        lines = self.entry().read_text().splitlines()
        self.assertIn("Exec=mirelo-windows open %f", lines)
        self.assertIn("TryExec=mirelo-windows", lines)
        self.assertTrue((self.programs / "mirelo-windows").exists())
        self.assertIn("MimeType=application/vnd.openxmlformats-officedocument.spreadsheetml.sheet;", lines)

    def test_has_an_icon_that_can_be_drawn(self):
        icon = self.prefix / "share" / "icons" / "hicolor" / "scalable" / "apps" / "mirelo.svg"
        self.assertIn("Icon=mirelo\n", self.entry().read_text())
        picture = xml.etree.ElementTree.parse(icon).getroot()
        self.assertEqual(picture.tag, "{http://www.w3.org/2000/svg}svg")
        self.assertEqual(picture.get("width"), picture.get("height"))


if __name__ == "__main__":
    unittest.main(verbosity=2)

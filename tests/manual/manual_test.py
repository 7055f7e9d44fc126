"""Manual pages, help and completion say the same.

    manual_test.py SOURCE_DIR TOOL MANUAL_DIR
"""

import json
import os
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
SOURCE, TOOL, MANUAL = sys.argv[1:4]
COMPLETION = os.path.join(SOURCE, "deploy_tools/upgradesrv/completion")
EXAMPLE = os.path.join(SOURCE, "examples/upgrade")


def output(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def help_of(command):
    return output(TOOL, *command, "--help")


def subcommands(command):
    text = help_of(command)
    return re.findall(r"^  ([a-z]+) ", text.partition("\nSubcommands:\n")[2], re.M)


def all_commands(command=()):
    """Every command that does something, and the tool itself; not "help", which has no page of its own."""
    found = [command] if command != ("metamodel",) else []
    for name in subcommands(command):
        if name != "help":
            found += all_commands(command + (name,))
    return found


def options_in_help(command):
    """Names and types of values, the type empty for none."""
    found = set()
    for names, value in re.findall(r"^  (-[^ ]+)(?: ([^ ]+))?", help_of(command), re.M):
        for name in names.split(","):
            found.add((name, re.sub(r"(?<!\[)=.*", "", value)))
    return found


def options_in_page(command):
    with open(os.path.join(SOURCE, "docs/commands", ("-".join(command) or "upgradesrv") + ".md"), encoding="utf-8") as file:
        text = file.read()
    found = set()
    for term in re.findall(r"^(`-.*)\n: ", text, re.M):
        plain = re.sub(r"[`*]", "", term)
        match = re.fullmatch(r"((?:-[a-z], )?--[a-z-]+)(?: (.*))?", plain)
        assert match, term
        for name in match[1].split(", "):
            found.add((name, match[2] or ""))
    return found


def bash_offers(*words):
    return output("bash", os.path.join(HERE, "drive.bash"), os.path.join(COMPLETION, "upgradesrv.bash"), TOOL, *words).split()


def zsh_offers(line):
    driver = os.path.join(HERE, "drive.zsh")
    return output("zsh", driver, "upgradesrv " + line, os.path.dirname(TOOL), COMPLETION).split()


class ManualTest(unittest.TestCase):
    def test_every_option_in_the_help_is_in_the_page_and_the_other_way_round(self):
        for command in all_commands():
            with self.subTest(command=command):
                self.assertEqual(options_in_page(command), options_in_help(command))

    def test_every_command_has_a_page(self):
        for command in all_commands():
            self.assertTrue(os.path.exists(os.path.join(MANUAL, "-".join(("upgradesrv",) + command) + ".1")), command)

    def test_every_page_is_of_a_command(self):
        pages = {page[:-3] for page in os.listdir(os.path.join(SOURCE, "docs/commands"))}
        self.assertEqual(pages, {"-".join(command) or "upgradesrv" for command in all_commands()})

    def test_pages_of_files_are_there(self):
        pages = {page for page in os.listdir(MANUAL) if page.endswith(".5")}
        self.assertEqual(pages, {"upgrade.json.5", "upgradesrv-decisions.5", "upgradesrv-metamodel.5"})

    def test_mandoc_finds_nothing_wrong(self):
        for page in os.listdir(MANUAL):
            with self.subTest(page=page):
                result = subprocess.run(
                    ["mandoc", "-T", "lint", "-W", "warning", os.path.join(MANUAL, page)], capture_output=True, text=True
                )
                self.assertEqual((result.stdout, result.stderr, result.returncode), ("", "", 0))

    def test_man_has_no_warnings(self):
        for page in os.listdir(MANUAL):
            with self.subTest(page=page):
                result = subprocess.run(
                    ["man", "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", os.path.join(MANUAL, page)],
                    env=dict(os.environ, LC_ALL="C.UTF-8", MANROFFSEQ="", MANWIDTH="80"),
                    capture_output=True,
                    text=True,
                )
                self.assertEqual((result.stderr, result.returncode), ("", 0))

    def test_pages_name_other_pages_and_no_files_of_the_manual(self):
        for page in os.listdir(MANUAL):
            with open(os.path.join(MANUAL, page), encoding="utf-8") as file:
                self.assertNotRegex(file.read(), r"\]\(|/\.md|[^/a-z-][a-z-]+\.md", page)


class BashCompletionTest(unittest.TestCase):
    def test_commands(self):
        self.assertEqual(bash_offers(""), subcommands(()))
        self.assertEqual(bash_offers("metamodel", ""), subcommands(("metamodel",)))
        self.assertEqual(bash_offers("help", ""), [name for name in subcommands(()) if name != "help"])
        self.assertEqual(bash_offers("help", "metamodel", ""), subcommands(("metamodel",)))
        self.assertEqual(bash_offers("re"), ["review"])

    def test_options_are_those_of_the_help(self):
        for command in all_commands():
            with self.subTest(command=command):
                self.assertEqual(set(bash_offers(*command, "-")), {name for name, _ in options_in_help(command)})

    def test_options_before_the_command_hide_it_not(self):
        self.assertEqual(bash_offers("--timeout", "5", "--quiet", "rev"), ["review"])

    def test_levels_are_those_that_the_tool_takes(self):
        levels = bash_offers("review", "--fail-on", "")
        self.assertEqual(levels, ["loss", "block", "attention", "safe", "never"])
        for level in levels:
            status = subprocess.run([TOOL, "review", "--stat", "--fail-on", level, EXAMPLE], capture_output=True).returncode
            self.assertIn(status, (0, 1), level)

    def test_kinds(self):
        self.assertEqual(bash_offers("run", "--elements", ""), ["class", "link", "behavior"])
        self.assertEqual(bash_offers("run", "--elements", "link,c"), ["link,class"])

    def test_languages_are_those_of_the_display_texts(self):
        with open(os.path.join(EXAMPLE, "multilanguage/strings/info.json"), encoding="utf-8") as file:
            languages = sorted(json.load(file)["inserted"])
        for command in ("init", "run", "review", "explain"):
            self.assertEqual(bash_offers(command, "--lang", ""), languages)

    def test_formats_are_those_of_the_help(self):
        formats = re.search(r" Formats: (.*)", help_of(("review",)))[1].split(", ")
        self.assertEqual(bash_offers("review", "-o", ""), formats)
        self.assertEqual(bash_offers("run", "--review", ""), formats)
        self.assertEqual(bash_offers("metamodel", "show", "--format", ""), ["text", "json"])

    def test_files_of_formats(self):
        self.assertEqual(bash_offers("review", "-o", "html", "=", EXAMPLE + "/inst"), [EXAMPLE + "/installation.json"])

    def test_rules_are_all_that_there_are(self):
        rules = re.findall(r"^\S+", output(TOOL, "explain"), re.M)
        self.assertGreater(len(rules), 50)
        self.assertEqual(bash_offers("explain", ""), rules)
        self.assertEqual(bash_offers("explain", "length-s"), ["length-shrinks"])

    def test_paths_are_those_of_the_review(self):
        self.assertEqual(bash_offers("decide", EXAMPLE, "class/Plant/"), ["class/Plant/table_name"])
        self.assertEqual(bash_offers("decide", "--reason", "a b", EXAMPLE, "class/Plant/"), ["class/Plant/table_name"])
        self.assertEqual(bash_offers("decide", EXAMPLE, "link/x", "class/Plant/"), ["class/Plant/table_name"])
        findings = json.loads(output(TOOL, "review", "--fail-on", "never", "-o", "json", EXAMPLE))["findings"]
        self.assertEqual(set(bash_offers("decide", EXAMPLE, "")), {finding["path"] for finding in findings})

    def test_paths_are_quoted_so_that_nothing_in_a_name_is_run(self):
        names = ["a b", "$(touch x)", "`x`", "it's", "a;b", "a&b|c>d", "$HOME", "a\\b", "Größe", "-- c", "#a", "a!b"]
        with tempfile.TemporaryDirectory() as directory:
            upgrade = os.path.join(directory, "an 'upgrade'")
            output(TOOL, "init", upgrade)
            classes = [{"internal_name": name} for name in names]
            for name, document in (("2024/metamodel.json", []), ("installation.json", classes)):
                with open(os.path.join(upgrade, name), "w", encoding="utf-8") as file:
                    json.dump({"generation": 2024, "classes": document}, file)
            for word in (upgrade, shlex.quote(upgrade), upgrade.replace(" ", "\\ ").replace("'", "\\'")):
                offered = output("bash", os.path.join(HERE, "drive.bash"), os.path.join(COMPLETION, "upgradesrv.bash"), TOOL,
                                 "decide", word, "").splitlines()
                if word == upgrade:
                    self.assertEqual(offered, [""])  # Two words for a shell.
                    continue
                read = output("bash", "-c", "printf '%s\\n' " + " ".join(offered)).splitlines()
                self.assertEqual(read, ["class/" + name for name in names])
            self.assertEqual(os.listdir(directory), ["an 'upgrade'"])

    def test_a_home_directory_is_that_of_the_user(self):
        offered = output("env", "HOME=" + SOURCE, "bash", os.path.join(HERE, "drive.bash"),
                         os.path.join(COMPLETION, "upgradesrv.bash"), TOOL, "decide", "~/examples/upgrade", "class/Plant/")
        self.assertEqual(offered.split(), ["class/Plant/table_name"])

    def test_values_behind_an_equals_sign(self):
        self.assertEqual(bash_offers("review", "--fail-on", "=", ""), ["loss", "block", "attention", "safe", "never"])
        self.assertEqual(bash_offers("review", "--fail-on", "=", "lo"), ["loss"])
        self.assertEqual(bash_offers("review", "--output", "=", "html", "=", EXAMPLE + "/inst"), [EXAMPLE + "/installation.json"])

    def test_odd_words_offer_nothing_wrong(self):
        for word in ("%n,", "\\n,", "*,", "$(touch x),"):
            self.assertEqual(bash_offers("run", "--elements", word), " ".join(word + kind for kind in ("class", "link", "behavior")).split())
        for word in ("'", '"', "[", "\\", "--x=", "=", ":"):
            self.assertEqual(bash_offers("explain", word), [])

    def test_directories_and_locations(self):
        self.assertEqual(bash_offers("run", SOURCE + "/exam"), [SOURCE + "/examples"])
        self.assertEqual(bash_offers("metamodel", "check", EXAMPLE + "/inst"), [EXAMPLE + "/installation.json"])
        self.assertEqual(bash_offers("metamodel", "copy", "a.json", EXAMPLE + "/inst"), [EXAMPLE + "/installation.json"])
        self.assertEqual(bash_offers("run", "--client", "sqlite3", ":", "//" + EXAMPLE + "/inst"),
                         ["//" + EXAMPLE + "/installation.json"])
        self.assertEqual(bash_offers("explain", "--decisions", EXAMPLE + "/dec"), [EXAMPLE + "/decisions.json"])


class ZshCompletionTest(unittest.TestCase):
    def test_commands(self):
        self.assertEqual(sorted(zsh_offers("")), sorted(subcommands(())))
        self.assertEqual(sorted(zsh_offers("metamodel ")), sorted(subcommands(("metamodel",))))

    def test_options_are_those_of_the_help(self):
        for command in (("review",), ("metamodel", "copy")):
            long_options = {name for name, _ in options_in_help(command) if name.startswith("--")}
            self.assertEqual(set(zsh_offers(" ".join(command) + " --")), long_options)

    def test_values(self):
        self.assertEqual(zsh_offers("explain length-s"), ["length-shrinks"])
        self.assertEqual(zsh_offers("decide " + EXAMPLE + " class/Plant/"), ["class/Plant/table_name"])
        self.assertEqual(zsh_offers("review -o j"), ["json", "junit"])
        self.assertEqual(sorted(zsh_offers("review --fail-on ")), ["attention", "block", "loss", "never", "safe"])


class FirstStepsTest(unittest.TestCase):
    def test_every_step_of_the_first_page_works_as_written(self):
        with open(os.path.join(SOURCE, "docs/first-steps.md"), encoding="utf-8") as file:
            commands = re.findall(r"^    (upgradesrv .*)$", file.read(), re.M)
        # A server is for other tests.
        commands = [command for command in commands if "postgresql:" not in command]
        self.assertEqual(
            [command.split()[1] for command in commands],
            ["init", "metamodel", "metamodel", "metamodel", "run", "review", "review", "explain", "decide"],
        )
        with tempfile.TemporaryDirectory() as directory:
            for command in commands:
                line = command.replace("SHIPPED", EXAMPLE + "/2024/metamodel.json")
                line = line.replace("INSTALLED", EXAMPLE + "/installation.json")
                result = subprocess.run(
                    ["sh", "-c", line],
                    cwd=directory,
                    env=dict(os.environ, PATH=os.path.dirname(TOOL) + ":" + os.environ["PATH"]),
                    capture_output=True,
                    text=True,
                )
                expected = 1 if command.split()[1] in ("run", "review") else 0
                self.assertEqual(result.returncode, expected, command + "\n" + result.stderr)
            with open(directory + "/up/decisions.json", encoding="utf-8") as file:
                self.assertIn("class/Part/property/Code/length", file.read())
            self.assertTrue(os.path.exists(directory + "/review.html"))


unittest.main(argv=sys.argv[:1])

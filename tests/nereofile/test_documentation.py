"""The manual page, the completions and the schemas know what the command knows."""

import json
import re
import shutil
import subprocess
import unittest

import jsonschema

from support import SCHEMAS, SOURCES, CommandTest

COMPLETIONS = SOURCES / "nereofile" / "completion"


class DocumentationTest(CommandTest):
    def commands(self):
        listed = re.search(r"Commands:\n((?:  .*\n)+)", self.run_command("--help").out)[1]
        return re.findall(r"^  (\w+)  ", listed, re.M)

    def options(self, command):
        """With the placeholders of their values."""
        listed = re.search(r"Options:\n((?:  .*\n)+)", self.run_command(command, "--help").out)[1]
        options = re.findall(r"^  --([\w-]+)(?: ([A-Z][\w,.:]*))?(?=  )", listed, re.M)
        self.assertIn(("help", ""), options)
        return [option for option in options if option[0] != "help"]

    def test_the_manual_page_has_each_command_and_option(self):
        page = (SOURCES / "nereofile" / "man" / "nereofile.1").read_text().replace(r"\-", "-")
        sections = dict(re.findall(r"^\.SS (\w+)\n(.*?)(?=^\.S[HS] )", page[page.index(".SH COMMANDS") :], re.M | re.S))
        self.assertEqual(list(sections), self.commands())
        synopsis = page[page.index(".SH SYNOPSIS") : page.index(".SH DESCRIPTION")]
        for command, section in sections.items():
            described = [
                (name, placeholder) for name, placeholder in re.findall(r'^\.BI? --([\w-]+)(?: " (.*)")?$', section, re.M)
            ]
            self.assertEqual(described, self.options(command), command)
            usage = re.search(rf"^\.B nereofile {command}\n(.*?)(?=^\.br|^\.B nereofile$)", synopsis, re.M | re.S)[1]
            self.assertEqual(
                re.findall(r"--([\w-]+)", usage), [name for name, _ in self.options(command)], command
            )

    def test_the_usage_names_each_option(self):
        for command in self.commands():
            usage = " ".join(self.run_command(command, "--help").out.split("\n\n")[0].split())
            for name, placeholder in self.options(command):
                self.assertIn(f"[--{name} {placeholder}]" if placeholder else f"[--{name}]", usage)

    @unittest.skipUnless(shutil.which("bash"), "bash isn't there")
    def test_bash_completes(self):
        def completed(*words):
            script = f"""
                source {COMPLETIONS}/nereofile.bash
                COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
                _nereofile; printf '%s\\n' "${{COMPREPLY[@]}}"
            """
            return subprocess.run(
                ["bash", "-c", script, "bash", "nereofile", *words],
                cwd=self.folder,
                stdout=subprocess.PIPE,
                check=True,
            ).stdout.decode().split()

        self.assertEqual(completed(""), [*self.commands(), "--help", "--version"])
        for command in self.commands():
            names = [f"--{name}" for name, _ in self.options(command)]
            self.assertEqual(sorted(completed(command, "--")), sorted([*names, "--help"]), command)
        self.write("two words.ctl", "")
        self.assertEqual(" ".join(completed("check", "tw")), "two words.ctl")
        self.assertEqual(completed("info", "--kind", "con"), ["configuration-xml", "configuration-text", "control"])

    def test_zsh_knows_each_option(self):
        script = (COMPLETIONS / "_nereofile").read_text()
        self.assertEqual(re.findall(r"^        '(\w+):", script, re.M), self.commands())
        branches = {
            command: branch
            for names, branch in re.findall(r"^        ([\w |]+)\)\n(.*?);;", script, re.M | re.S)
            for command in names.split(" | ")
        }
        for command in self.commands():
            self.assertEqual(
                set(re.findall(r"--([\w-]+)\[", branches[command])) - {"help"},
                {name for name, _ in self.options(command)},
                command,
            )

    def test_fish_knows_each_option(self):
        script = (COMPLETIONS / "nereofile.fish").read_text()
        self.assertEqual(re.search(r"^set -l commands (.*)$", script, re.M)[1].split(), self.commands())
        known = {command: set() for command in self.commands()}
        for names, option in re.findall(r"__fish_seen_subcommand_from ([\w ]+)' -l ([\w-]+)", script):
            for command in names.split():
                known[command].add(option)
        for command in self.commands():
            self.assertEqual(known[command], {name for name, _ in self.options(command)}, command)

    def test_shells_read_their_completions(self):
        for shell, name in [("bash", "nereofile.bash"), ("zsh", "_nereofile"), ("fish", "nereofile.fish")]:
            if shutil.which(shell):
                subprocess.run([shell, "-n", COMPLETIONS / name], check=True)

    def test_there_is_a_schema_for_each_command_with_json(self):
        with_json = {command for command in self.commands() if ("json", "") in self.options(command)}
        self.assertEqual({path.name.split(".")[0] for path in SCHEMAS.iterdir()}, with_json)
        for path in SCHEMAS.iterdir():
            jsonschema.Draft202012Validator.check_schema(json.loads(path.read_text()))


if __name__ == "__main__":
    unittest.main()

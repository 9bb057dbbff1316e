#!/usr/bin/env python3
"""Carries out the sessions that pages show and compares what they print with what the pages say.

usage: check_sessions.py [--new] [--node COMMAND] FILE ...

A session is a block fenced as ```console. A line that begins with "$ " is a shell command; lines
that begin with "pmnode> " are what is then typed at its prompt; the others are the output. A line
"..." stands for any number of lines, 0xADDRESS for any address, ___ for a line in a source file, and
blank lines do not count. Shell commands run in the folder that this is called from. With --new the output
in the files is replaced by what came out, but for what a "..." at its beginning stands for, and for
output with a "..." elsewhere. A session without a shell command is typed at the prompt of COMMAND.
"""
import re
import subprocess
import sys
import tempfile

PROMPT = "pmnode> "
SOURCE_LINE = re.compile(r"(\bpm_lib_\w+ +\d{1,3})\d{3}\b")
ADDRESS = re.compile(r"0x[0-9a-f]{8,16}\b")
FENCE = re.compile(r"^```console\n(.*?)^```\n", re.M | re.S)


class Step:
    def __init__(self, command):
        self.command = command  # of the shell; None: the node that --node names
        self.typed = []
        self.shown = []  # as the page has it, the typed lines included


def steps_of(block):
    steps = []
    for line in block.splitlines():
        if line.startswith("$ "):
            steps.append(Step(line[2:]))
            continue
        if not steps:
            steps.append(Step(None))
        if line.startswith(PROMPT):
            steps[-1].typed.append(line[len(PROMPT):])
        steps[-1].shown.append(line)
    return steps


def run(step, node):
    command = step.command or node
    if step.typed and "--script" not in command:  # else the script types them
        script = tempfile.NamedTemporaryFile("w", suffix=".pmn")
        script.write("\n".join(step.typed) + "\n")
        script.flush()
        command += " --script " + script.name
    result = subprocess.run(["bash", "-c", command], stdin=subprocess.DEVNULL, timeout=300,
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    # The debug window's own signs come in another encoding.
    text = result.stdout.decode("utf-8", "surrogateescape")
    lines = [line.encode("utf-8", "surrogateescape").decode("gb18030", "replace").rstrip()
             if any("\udc80" <= letter <= "\udcff" for letter in line) else line.rstrip()
             for line in text.splitlines()]
    if step.command is None:  # what the start shows is no part of it
        first = next((place for place, line in enumerate(lines) if line.startswith(PROMPT)), 0)
        lines = lines[first:]
    return [SOURCE_LINE.sub(r"\1___", ADDRESS.sub("0xADDRESS", line)) for line in lines if line]


def agree(shown, printed):
    """Do the printed lines match the shown ones, "..." standing for any number?"""
    if not shown:
        return not printed
    if shown[0] == "...":
        return any(agree(shown[1:], printed[skip:]) for skip in range(len(printed) + 1))
    return bool(printed) and shown[0] == printed[0] and agree(shown[1:], printed[1:])


def main():
    arguments = sys.argv[1:]
    node = ""
    new = "--new" in arguments
    if new:
        arguments.remove("--new")
    if "--node" in arguments:
        place = arguments.index("--node")
        node = arguments[place + 1]
        del arguments[place:place + 2]
    ran = failed = 0
    for file in arguments:
        page = open(file, encoding="utf-8").read()
        replaced = page
        for block in FENCE.findall(page):
            made = []
            for step in steps_of(block):
                printed = run(step, node)
                shown = [line.rstrip() for line in step.shown if line.strip()]
                ran += 1 + len(step.typed)
                if step.command is not None:
                    made.append("$ " + step.command)
                if new and shown[:1] == ["..."] and step.typed:
                    made.append("...")
                    first = next(n for n, line in enumerate(printed) if line.startswith(PROMPT))
                    printed = printed[first:]
                    shown = shown[1:]
                if new and "..." not in shown:
                    for line in printed:
                        made += ["", line] if line.startswith(PROMPT) and made else [line]
                    continue
                made += step.shown
                if not agree(shown, printed):
                    failed += 1
                    print(f"{file}: $ {step.command or node}")
                    print("shown:\n  " + "\n  ".join(shown))
                    print("came out:\n  " + "\n  ".join(printed))
            if new:
                replaced = replaced.replace(block, "\n".join(made) + "\n", 1)
        if replaced != page:
            open(file, "w", encoding="utf-8").write(replaced)
    print(f"{ran} commands of {len(arguments)} pages print what is shown" if not failed
          else f"{failed} steps print something else")
    return 1 if failed or not ran else 0


if __name__ == "__main__":
    sys.exit(main())

"""How the tests run the program."""
import json
import os
import pathlib
import subprocess
import sys

PROGRAM = pathlib.Path(sys.argv.pop(1)).resolve()
ENVIRONMENT = {"PATH": "/usr/bin:/bin", "HOME": "/nonexistent", "LC_ALL": "C", "NO_COLOR": "1",
               "OPENBLAS_NUM_THREADS": "1",  # its buffers grow with the processors, and a test bounds the memory
               **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}}


def run(*words, stdin=b"", folder=None, timeout=60, **options):
    """What the program answers: status, standard output and standard error as text."""
    if isinstance(stdin, str):
        stdin = stdin.encode()
    done = subprocess.run([PROGRAM, *words], input=stdin, capture_output=True, cwd=folder, timeout=timeout,
                          env=ENVIRONMENT, check=False, **options)
    done.stdout = done.stdout.decode()
    done.stderr = done.stderr.decode()
    return done


def results(*words, **options):
    """The JSON objects that the program prints, one for each line."""
    return [json.loads(line) for line in run(*words, **options).stdout.splitlines()]

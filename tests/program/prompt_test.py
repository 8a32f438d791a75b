"""The prompt, on a terminal of its own.

usage: prompt_test.py PROGRAM
"""
import os
import pathlib
import pty
import select
import signal
import tempfile
import termios
import time
import unittest

from program import ENVIRONMENT, PROGRAM


class Terminal:
    """The program at a terminal of 60 columns."""

    def __init__(self, *words, state, locale):
        self.pid, self.terminal = pty.fork()
        if self.pid == 0:
            os.execve(PROGRAM, [str(PROGRAM), *words],
                      {**ENVIRONMENT, "TERM": "xterm", "LC_ALL": locale, "XDG_STATE_HOME": state})
        termios.tcsetwinsize(self.terminal, (24, 60))
        self.output = ""

    def expect(self, text, seconds=20):
        """Waits until the text has been shown since the last one that was expected."""
        end = time.monotonic() + seconds
        while text not in self.output:
            ready, _, _ = select.select([self.terminal], [], [], max(0.0, end - time.monotonic()))
            if not ready:
                raise AssertionError(f"no {text!r} in {self.output!r}")
            try:
                self.output += os.read(self.terminal, 4096).decode(errors="replace")
            except OSError:
                raise AssertionError(f"ended without {text!r}: {self.output!r}") from None
        self.output = self.output[self.output.index(text) + len(text):]

    def type(self, keys):
        os.write(self.terminal, keys.encode())

    def leave(self, seconds=20):
        """Ends the input at the next prompt (before it, the terminal itself would take the key). The exit status."""
        self.expect("> ")
        self.type("\x04")
        end = time.monotonic() + seconds
        try:
            while select.select([self.terminal], [], [], max(0.0, end - time.monotonic()))[0]:
                self.output += os.read(self.terminal, 4096).decode(errors="replace")
            os.kill(self.pid, signal.SIGKILL)
            raise AssertionError(f"still there after {self.output!r}")
        except OSError:  # the program has let go of the terminal
            pass
        finally:
            os.close(self.terminal)
            status = os.waitpid(self.pid, 0)[1]
        return os.waitstatus_to_exitcode(status)


class Prompt(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.state = folder.name

    def start(self, *words, locale="C.UTF-8"):
        return Terminal("eval", *words, state=self.state, locale=locale)

    def test_results_errors_and_the_end(self):
        terminal = self.start()
        terminal.expect("> ")
        terminal.type("6 * 7\r")
        terminal.expect("42\r\n")
        terminal.expect("> ")
        terminal.type("nobody\r")
        terminal.expect("undefined name: nobody")
        self.assertEqual(terminal.leave(), 1)

    def test_the_way_out(self):
        terminal = self.start()
        terminal.expect("> ")
        terminal.type("quit\r")
        terminal.expect("undefined name: quit")
        terminal.expect("Control-D ends the program.\r\n")
        terminal.expect("> ")
        terminal.type("exit := 42\r")
        terminal.expect("> ")
        terminal.type("exit\r")
        terminal.expect("42\r\n")
        self.assertNotIn("Control-D", terminal.output)
        self.assertEqual(terminal.leave(), 1)

    def test_a_bracket_goes_on_in_the_next_line(self):
        terminal = self.start()
        terminal.expect("> ")
        terminal.type("[1,\r")
        terminal.expect(". ")
        terminal.type("2]\r")
        terminal.expect("[ 1  2 ]")
        self.assertEqual(terminal.leave(), 0)

    def test_completion(self):
        terminal = self.start()
        terminal.expect("> ")
        terminal.type("stiffness_of_bar := 21\r")
        terminal.expect("> ")
        terminal.type("2 * stiff\t\r")
        terminal.expect("42\r\n")
        terminal.expect("> ")
        terminal.type("transp\t[1, 2])\r")
        terminal.expect("[ 1 ]")
        self.assertEqual(terminal.leave(), 0)

    def test_no_character_is_lost_in_any_locale(self):
        for locale in ("C", "C.UTF-8", "nowhere"):
            terminal = self.start(locale=locale)
            terminal.expect("> ")
            terminal.type("3 \u00b5m\r")
            terminal.expect("3e-6 m\r\n")
            self.assertEqual(terminal.leave(), 0)

    def test_choices_are_shown(self):
        terminal = self.start()
        terminal.expect("> ")
        terminal.type("subm\t\x15aug_1 := 1\r")  # one choice; then the line is cleared
        terminal.expect("atrix(")
        terminal.expect("> ")
        terminal.type("aug\t")
        terminal.expect("aug_1  augment")
        terminal.type("_1 + 41\r")
        terminal.expect("42\r\n")
        self.assertEqual(terminal.leave(), 0)

    def test_control_c_drops_the_line(self):
        terminal = self.start()
        terminal.expect("> ")
        terminal.type("[1, 2,\r")
        terminal.expect(". ")
        terminal.type("99\x03")
        terminal.expect("^C\r\n> ")
        terminal.type("6 * 7\r")
        terminal.expect("42\r\n")
        self.assertEqual(terminal.leave(), 0)

    def test_history_outlives_the_program(self):
        for keys in ("10 + 32\r", "\x1b[A\r"):
            terminal = self.start()
            terminal.expect("> ")
            terminal.type(keys)
            terminal.expect("42\r\n")
            self.assertEqual(terminal.leave(), 0)
        self.assertTrue(pathlib.Path(self.state, "bailuxsko", "history").is_file())

    def test_history_outlives_an_interrupted_computation(self):
        terminal = self.start()
        terminal.expect("> ")
        terminal.type("f(n) := if(n < 1, 0, f(n - 1) + f(n - 1))\rf(100)\r")
        terminal.expect("f(100)\r\n")
        self.addCleanup(os.close, terminal.terminal)
        ended, status = 0, 0
        for _ in range(200):  # until the editor has handed the terminal back, the key is an ordinary one
            terminal.type("\x03")
            time.sleep(0.1)
            ended, status = os.waitpid(terminal.pid, os.WNOHANG)
            if ended:
                break
        else:
            os.kill(terminal.pid, signal.SIGKILL)
            os.waitpid(terminal.pid, 0)
        self.assertEqual((ended, os.waitstatus_to_exitcode(status)), (terminal.pid, -signal.SIGINT))
        self.assertIn("f(100)", pathlib.Path(self.state, "bailuxsko", "history").read_text())

    def test_the_end_of_the_input_ends_the_line(self):
        terminal = self.start()
        terminal.expect("> ")
        terminal.type("[1,\r")
        terminal.expect(". ")
        terminal.type("\x04")
        terminal.expect("\r\n")
        terminal.expect("'[' is never closed")
        self.assertEqual(terminal.leave(), 1)

    def test_no_place_for_a_history(self):
        self.state = "/proc/nowhere"
        terminal = self.start()
        terminal.expect("> ")
        terminal.type("6 * 7\r")
        terminal.expect("42\r\n")
        self.assertEqual(terminal.leave(), 0)

    def test_the_terminals_width(self):
        terminal = self.start()
        terminal.expect("> ")
        terminal.type("f(i, j) := 1000 + j\rmatrix(1, 50, f)\r")
        terminal.expect("... 1 by 50")
        self.assertEqual(terminal.leave(), 0)

    def test_json_at_a_prompt(self):
        terminal = self.start("--json")
        terminal.expect("> ")
        terminal.type("1\r")
        terminal.expect('{"kind":"number","re":1.0,"im":0.0,"unit":""}')
        self.assertEqual(terminal.leave(), 0)


if __name__ == "__main__":
    unittest.main()

"""The command line: commands, options, statuses, where text goes.

usage: command_line_test.py PROGRAM
"""
import os
import pathlib
import subprocess
import tempfile
import unittest

from program import ENVIRONMENT, PROGRAM, results, run


class Status(unittest.TestCase):
    def expect(self, status, *words, **options):
        done = run(*words, **options)
        self.assertEqual(done.returncode, status, f"{words}: {done.stdout}{done.stderr}")
        return done

    def test_all_succeeded(self):
        self.assertEqual(self.expect(0, "eval", "1+1").stdout, "2\n")
        self.expect(0, "eval", stdin="a := 1\na + 1\n")
        self.expect(0, "run", "-", stdin="")
        self.expect(0, "functions")

    def test_some_failed(self):
        done = self.expect(1, "eval", "1", "nobody", "3")
        self.assertEqual(done.stdout, "1\n3\n")
        self.assertIn("error: undefined name: nobody", done.stderr)
        self.expect(1, "eval", "(1")

    def test_command_line_cannot_be_used(self):
        for words in [(), ("walk",), ("run",), ("run", "a", "b"), ("eval", "--jsn", "1"), ("functions", "--json"),
                      ("eval", "--origin"), ("eval", "--origin", "1.5", "1"), ("eval", "--origin", "x", "1"),
                      ("eval", "--origin", "3000000000", "1"), ("eval", "--tol", "much", "1"),
                      ("eval", "--zero-over-zero-is-zero", "yes", "1"),
                      ("--strict-singularity-checking", "maybe", "eval", "1")]:
            with self.subTest(words=words):
                done = self.expect(2, *words)
                self.assertEqual(done.stdout, "")
                self.assertTrue(done.stderr.startswith("bailuxsko: "), done.stderr)

    def test_unknown_command_is_named(self):
        self.assertIn("no command walk; there are run, eval and functions", self.expect(2, "walk", "a.ws").stderr)
        self.assertIn("a command is missing; there are run, eval and functions", self.expect(2).stderr)
        self.assertIn("unknown option: --walk", self.expect(2, "--walk").stderr)
        self.assertIn("--origin", self.expect(2, "--origin", "x", "eval", "1").stderr)

    def test_file_cannot_be_read(self):
        with tempfile.TemporaryDirectory() as folder:
            for file, reason in [("missing.ws", "No such file or directory"), (".", "Is a directory")]:
                for json in ([], ["--json"]):
                    done = self.expect(2, "run", *json, file, folder=folder)
                    self.assertEqual(done.stdout, "")
                    self.assertEqual(done.stderr, f"bailuxsko: cannot read {file}: {reason}\n")

    def test_help_and_version(self):
        for words in [("--help",), ("run", "--help"), ("eval", "--help"), ("functions", "--help")]:
            done = self.expect(0, *words)
            self.assertIn("Usage", done.stdout)
            self.assertEqual(done.stderr, "")
        self.assertRegex(self.expect(0, "--version").stdout, r"^bailuxsko \d+\.\d+\.\d+\n$")


class Statements(unittest.TestCase):
    def test_each_argument_is_a_statement(self):
        self.assertEqual(run("eval", "a := 2", "a * 3").stdout, "6\n")
        self.assertEqual([r["line"] for r in results("eval", "--json", "1", "x", "[1", "y") if r["kind"] == "error"],
                         [2, 3, 4])

    def test_words_that_look_like_options_and_commands(self):
        self.assertEqual(run("eval", "-2^2").stdout, "-4\n")
        self.assertEqual(run("eval", "-(1)").stdout, "-1\n")
        self.assertEqual(run("eval", "x := 3", "-x").stdout, "-3\n")
        self.assertEqual(run("eval", "h := 3", "-h").stdout, "-3\n")
        self.assertEqual(run("eval", "x := 3", "--", "--x").stdout, "3\n")
        self.assertEqual(run("eval", "run := 4", "run").stdout, "4\n")
        self.assertEqual(run("eval", "[1,2]").stdout, "[ 1  2 ]\n")

    def test_empty_arguments_and_comments_are_no_statements(self):
        self.assertEqual(results("eval", "--json", "", "  ", "# nothing", "1"),
                         [{"kind": "number", "re": 1.0, "im": 0.0, "unit": ""}])

    def test_standard_input(self):
        for words in [("eval",), ("run", "-")]:
            self.assertEqual(run(*words, stdin="1\n2").stdout, "1\n2\n")

    def test_a_bracket_over_many_lines_of_standard_input(self):
        done = run("eval", stdin="sigmasum([" + ";\n".join(["1"] * 300000) + "])\n2\n")
        self.assertEqual(done.stdout, "300000\n2\n")

    def test_byte_order_mark_line_ends_and_tabs(self):
        source = b"\xef\xbb\xbfa\t:= [1,\r\n 2]\r\n\r\n# comment\r\na[1]\r\n"
        self.assertEqual(run("eval", stdin=source).stdout, "2\n")

    def test_files_are_found_from_the_worksheets_folder(self):
        with tempfile.TemporaryDirectory() as folder:
            pathlib.Path(folder, "sub").mkdir()
            pathlib.Path(folder, "sub", "numbers.csv").write_text("1,2\n", encoding="utf-8")
            pathlib.Path(folder, "sub", "sheet.ws").write_text('read_csv("numbers.csv")\n', encoding="utf-8")
            self.assertEqual(run("run", "sub/sheet.ws", folder=folder).stdout, "[ 1  2 ]\n")
            self.assertEqual(run("eval", 'read_csv("sub/numbers.csv")', folder=folder).stdout, "[ 1  2 ]\n")


class Settings(unittest.TestCase):
    def test_options_set_where_a_worksheet_starts(self):
        for words in [("eval", "--origin", "1"), ("--origin", "1", "eval"), ("eval", "--origin=1")]:
            self.assertEqual(run(*words, "[7, 8][1, 2]").stdout, "8\n", words)
        self.assertEqual(run("eval", "--origin", "-1", "[7, 8][-1, 0]").stdout, "8\n")
        self.assertEqual(run("eval", "--zero-over-zero-is-zero", "on", "[0, 1] / 0").returncode, 1)
        self.assertEqual(run("eval", "--zero-over-zero-is-zero", "on", "[0, 0] / 0").stdout, "[ 0  0 ]\n")
        for tol in ["1e-6", "inf", "NaN", "-1"]:
            self.assertEqual(run("eval", "--tol", tol, "1").returncode, 0, tol)
        self.assertEqual(run("eval", "--strict-singularity-checking", "off", "1").returncode, 0)

    def test_options_with_run_and_standard_input(self):
        self.assertEqual(run("run", "--origin", "1", "-", stdin="[7, 8][1, 2]").stdout, "8\n")
        self.assertEqual(run("run", "-", "--json", "--origin", "1", stdin="set origin 0\n[7, 8][0, 1]").stdout,
                         '{"kind":"setting","name":"origin"}\n{"kind":"number","re":8.0,"im":0.0,"unit":""}\n')


class Json(unittest.TestCase):
    SOURCE = 'a := [1, 2; 3, 4] * m\nf(x) := x\nset tol 1\na\nf\n"te\\"xt"\n1/0\n)\nnobody(1)\n'

    def test_one_object_for_each_statement_and_nothing_else(self):
        done = run("eval", "--json", stdin=self.SOURCE)
        self.assertEqual(done.stderr, "")
        self.assertEqual(done.returncode, 1)
        self.assertEqual([r["kind"] for r in results("eval", "--json", stdin=self.SOURCE)],
                         ["definition", "definition", "setting", "matrix", "function", "text", "error", "error", "error"])

    def test_each_line_is_written_before_the_next_statement(self):
        with subprocess.Popen([PROGRAM, "run", "--json", "-"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              env=ENVIRONMENT) as program:
            program.stdin.write(b'1\nr(n) := r(n + 1) + r(n + 1)\nwrite_csv([1], "/dev/stdout")\n2\n')
            program.stdin.close()
            lines = program.stdout.read().split(b"\n")
        self.assertEqual(lines[0], b'{"kind":"number","re":1.0,"im":0.0,"unit":""}')
        self.assertEqual(lines[2], b"1")  # between the lines of its neighbours
        self.assertEqual(lines[4], b'{"kind":"number","re":2.0,"im":0.0,"unit":""}')

    def test_a_pipe_gets_each_answer_before_the_next_question(self):
        for words in (["eval", "--json"], ["run", "--json", "-"]):
            with subprocess.Popen([PROGRAM, *words], stdin=subprocess.PIPE, stdout=subprocess.PIPE, bufsize=0,
                                  env=ENVIRONMENT) as program:
                def ask(question):
                    program.stdin.write(question)
                    return program.stdout.readline()
                self.assertEqual(ask(b"a := 1\n"), b'{"kind":"definition","name":"a"}\n')
                self.assertEqual(ask(b"# a comment\r\na + 1\r\n"), b'{"kind":"number","re":2.0,"im":0.0,"unit":""}\n')
                program.stdin.write(b"[a,\n 2; 3")  # an open bracket goes on
                self.assertIn(b'"data":[[1.0,2.0],[3.0,4.0]]', ask(b",\n4]\n"))
                self.assertIn(b'"line":7,"column":1', ask(b"nobody\n"))
                program.stdin.write(b"a + 2")  # without a line end, at the end
                program.stdin.close()
                self.assertEqual(program.stdout.read(), b'{"kind":"number","re":3.0,"im":0.0,"unit":""}\n')


class Output(unittest.TestCase):
    def test_results_and_errors_keep_their_order(self):
        done = subprocess.run([PROGRAM, "eval", "1", "nobody", "2"], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              env=ENVIRONMENT, check=False)
        lines = done.stdout.decode().splitlines()
        self.assertEqual(lines[0], "1")
        self.assertEqual(lines[1], "error: undefined name: nobody")
        self.assertEqual(lines[-1], "2")

    def test_a_reader_that_goes_away(self):
        for words in [["eval", "--json"], ["eval"], ["functions"]]:
            done = subprocess.run(["/bin/sh", "-c", '"$0" "$@" | :', PROGRAM, *words], input=b"1\n" * 20000,
                                  capture_output=True, env=ENVIRONMENT, check=False)
            self.assertEqual(done.stderr, b"", words)

    def test_results_that_cannot_be_written(self):
        for words in ("eval 1", "functions", "--help", "--version"):
            for redirection in (">/dev/full", ">&-"):
                done = subprocess.run(["/bin/sh", "-c", f'"$0" {words} {redirection}', PROGRAM], capture_output=True,
                                      env=ENVIRONMENT, check=False)
                self.assertEqual(done.returncode, 2, f"{words} {redirection}")
                self.assertIn(b"bailuxsko: cannot write results: ", done.stderr)

    def test_a_file_that_may_not_grow(self):
        with tempfile.TemporaryDirectory() as folder:
            statements = ["f(i, j) := i", "write_csv(matrix(1000, 10, f), \"large.csv\")"]
            done = subprocess.run(["/bin/sh", "-c", 'ulimit -f 1; "$0" eval "$@"', PROGRAM, *statements], cwd=folder,
                                  capture_output=True, env=ENVIRONMENT, check=False)
            self.assertEqual(done.returncode, 1)
            self.assertIn(b"^ File too large\n", done.stderr)

    def test_colours_are_for_terminals_only(self):
        environment = {**ENVIRONMENT, "TERM": "xterm"}
        environment.pop("NO_COLOR")
        done = subprocess.run([PROGRAM, "eval", "nobody"], capture_output=True, env=environment, check=False)
        self.assertNotIn(b"\x1b", done.stderr)


class Functions(unittest.TestCase):
    def test_list(self):
        lines = run("functions").stdout.splitlines()
        rows = {line.split("(")[0]: line for line in lines}
        self.assertIn("lu", rows)
        self.assertIn("sqrt", rows)
        self.assertTrue(rows["lu"].startswith("lu(A)  "), rows["lu"])
        self.assertEqual(len(rows), len(lines))

    def test_one(self):
        done = run("functions", "lu")
        self.assertEqual(done.returncode, 0)
        for part in ("lu(A)\n", "\nunit ", "must be square (argument 1)", "singular matrix (the call)", "out of memory",
                     "\nexample "):
            self.assertIn(part, done.stdout)

    def test_unknown(self):
        done = run("functions", "lsolv")
        self.assertEqual((done.returncode, done.stdout), (2, ""))
        self.assertEqual(done.stderr, "bailuxsko: no function lsolv; did you mean lsolve?\n")
        self.assertEqual(run("functions", "quaternion").stderr, "bailuxsko: no function quaternion; bailuxsko functions lists them\n")

    def test_every_example_gives_a_value(self):
        page = run("functions", "--markdown").stdout
        self.assertNotIn("error:", page)
        self.assertEqual(page.count("```worksheet"), len(run("functions").stdout.splitlines()))


if __name__ == "__main__":
    unittest.main()

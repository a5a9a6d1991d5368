import unittest

from velum_checks.generatedcode import class_names, control_flow, long_bodies, long_lines


class ControlFlow(unittest.TestCase):
    def test_every_kind_of_decision_is_found_with_its_line(self) -> None:
        for word, body in (
            ("if", "if (a) b();"),
            ("for", "for (;;) {}"),
            ("while", "while (a) {}"),
            ("try", "try { f(); }"),
            ("switch", "switch (a) {}"),
            ("?", "return a ? b : c;"),
        ):
            with self.subTest(word):
                self.assertIn((2, word), control_flow(f"void f() {{\n{body}\n}}\n"))

    def test_words_that_are_no_code_pass(self) -> None:
        text = "\n".join(
            [
                "#if defined(X)",
                "#define M(x) \\",
                "    if (x)",
                "/// What is true if the type is known, for whom?",
                "/* while */",
                r'const char* text = "if \" for";',
                'const char* raw = R"x(if "a" (b))x";',
                "char mark = '?';",
                "int thousand = 1'000; int other = 2'000;",
                "void notify(Element before);",
                "#endif",
            ]
        )
        self.assertEqual([], control_flow(text))

    def test_lines_after_a_comment_of_several_lines_keep_their_number(self) -> None:
        self.assertEqual([(3, "if")], control_flow("/* a\n b */\nif (x)"))


class Bodies(unittest.TestCase):
    def test_a_body_of_two_statements_is_found_where_it_begins(self) -> None:
        text = "struct S {\n    int a;\n    int b;\n};\nvoid f() const noexcept {\n    a(); b();\n}\n"
        self.assertEqual([(5, 2)], long_bodies(text))

    def test_bodies_of_one_statement_or_none_pass(self) -> None:
        text = 'S::S(int a) : a_(a) {}\nint f() { return g("a;b;c"); } // one; two;\n'
        self.assertEqual([], long_bodies(text))


class Lines(unittest.TestCase):
    def test_a_line_that_could_be_broken_is_found_with_its_width(self) -> None:
        text = f'short();\n{"a" * 101}();\n/// {"b " * 50}\nf("{"c" * 100}");\n'
        self.assertEqual([(2, 104), (3, 104), (4, 106)], long_lines(text))

    def test_the_widest_line_and_what_cannot_be_broken_pass(self) -> None:
        name = "c" * 100
        self.assertEqual([], long_lines(f'{"a" * 100}\n#include "{name}.h"\n    "{name}")\n'))


class ClassNames(unittest.TestCase):
    NAMES = frozenset({"Integer", "Matrix"})

    def test_each_form_of_a_metaclass_is_found(self) -> None:
        for name in ("Matrix", "ImmutableMatrix", "MatrixIntf", "MatrixImpl", "MatrixDeviantImpl"):
            with self.subTest(name):
                self.assertEqual([(2, name)], class_names(f"\nclass {name};", self.NAMES))

    def test_the_kernels_own_classes_and_longer_names_pass(self) -> None:
        text = "QOB::Integer id; class {{ cls.name }}Intf; MatrixView v; integer = 1;"
        self.assertEqual([], class_names(text, self.NAMES))

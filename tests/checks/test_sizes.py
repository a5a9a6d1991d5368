import unittest

from velum_checks.cplusplus import Function, functions
from velum_checks.sizes import FILE, FUNCTION, long_parts


class Functions(unittest.TestCase):
    def test_each_kind_of_definition_is_found_with_its_first_line_and_length(self) -> None:
        for name, text in (
            ("f", "void f() {\n}"),
            ("A::f", "int A::f(int a) const noexcept {\n}"),
            ("A::operator==", "bool A::operator==(A const& b) const {\n}"),
            ("operator()", "bool operator()(int a) const {\n}"),
            ("A::operator std::string", "A::operator std::string() const {\n}"),
            ("~A", "~A() {\n}"),
            ("A::A", "A::A(int b) : b_(b), c_{b} {\n}"),
            ("A::A", "A::A(int b) : c_{b}\n{}"),
            ("f", "template <class T, auto F = g(1)>\nauto f(T t = {}) -> T {}"),
            ("f", "template <class T>\nrequires T::value auto f(T t) {}"),
            ("f", "[[noreturn]] void\nf() {}"),
            ("TEST", "TEST(Suite, Name) {\n}"),
        ):
            with self.subTest(text):
                self.assertEqual([Function(name, 1, text.count("\n") + 1)], functions(text))

    def test_functions_of_classes_and_namespaces_are_found_and_lambdas_belong_to_theirs(self) -> None:
        text = """\
HEADER_OF(X, "{")
namespace a {
struct B final : C<(1)> {
    enum E { x, y };
    int i = g(1);
    int k{g(2)};
    void f() {
        auto l = [](int j) { return j; };
        if (i) {
            l(i);
        }
    }
    void g() override { i = 1; }
};
constexpr int table[] = {
    f(1),
    [] { return 2; }(),
};
} // namespace a
static void h() {
    // }
    s("}");
}
"""
        self.assertEqual(
            [Function("f", 7, 6), Function("g", 13, 1), Function("h", 20, 4)], functions(text)
        )


class Sizes(unittest.TestCase):
    def test_a_function_may_have_as_many_lines_as_are_allowed_and_no_more(self) -> None:
        for name, head, end in (
            ("x.cpp", "void f(int a,\n       int b) {\n", "}\n"),
            ("x.py", "def f(\n    a: int) -> None:\n", ""),
        ):
            most = FUNCTION - (head + end).count("\n")
            with self.subTest(name):
                line = "    a()\n" if name.endswith(".py") else "    a();\n"
                self.assertEqual([], long_parts(name, head + line * most + end))
                (finding,) = long_parts(name, head + line * (most + 1) + end)
                self.assertTrue(finding.startswith(f"{name}:1: f has {FUNCTION + 1} lines"))

    def test_a_file_may_have_as_many_lines_as_are_allowed_and_no_more(self) -> None:
        self.assertEqual([], long_parts("x.h", "int a;\n" * FILE))
        self.assertEqual(
            [f"x.h: {FILE + 1} lines; {FILE} are allowed"], long_parts("x.h", "int a;\n" * (FILE + 1))
        )


if __name__ == "__main__":
    unittest.main()

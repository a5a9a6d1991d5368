"""How lines that are too long are broken: what stays together, and that nothing gets lost."""

import re
import unittest
from pathlib import Path

from velumgen import layout, loader, outputs

METAMODEL = Path(__file__).resolve().parents[2] / "metamodel"
# A name that leaves little room beside it.
LONG = "Park::zoo::ACageForAnimalsThatLikeToBeAmongThemselves"


def unbroken(text):
    """The text without what a break may change: white space, and the marks of comments."""
    return re.sub(r"///?|\s", "", text)


class Breaks(unittest.TestCase):
    def check(self, line, *expected):
        self.assertEqual(layout.wrapped(line).split("\n"), list(expected))

    def test_a_line_that_fits_stays_as_it_is(self):
        line = "x" * 90 + "(1, 2, 3);"
        self.check(line, line)

    def test_base_clauses_come_before_commas(self):
        self.check(
            f"class Cage final : public Base<{LONG}, {LONG}> {{",
            "class Cage final",
            f"    : public Base<{LONG},",
            f"        {LONG}> {{",
        )

    def test_parameters_are_parted_from_the_body(self):
        self.check(
            f"    void put(Deviant deviant, {LONG} const& first, Cage second) {{",
            f"    void put(Deviant deviant, {LONG} const& first,",
            "            Cage second) {",
        )

    def test_a_result_type_stands_alone_before_a_single_parameter_is_moved(self):
        self.check(
            f"    virtual QOB::Sequence<{LONG}> getInhabitants(QOB::Deviant deviant) const;",
            f"    virtual QOB::Sequence<{LONG}>",
            "    getInhabitants(QOB::Deviant deviant) const;",
        )

    def test_nested_brackets_are_indented_by_their_depth(self):
        self.check(
            f"using Rules = List<Rule<1, &{LONG}::get, &{LONG}::set>>;",
            "using Rules =",
            "    List<",
            f"        Rule<1, &{LONG}::get,",
            f"            &{LONG}::set>>;",
        )

    def test_a_body_on_the_same_line_gets_lines_of_its_own(self):
        self.check(
            f"    {LONG}* upcast(int) {{ return QOB::upcast<{LONG}>(this); }}",
            f"    {LONG}* upcast(int) {{",
            f"        return QOB::upcast<{LONG}>(this);",
            "    }",
        )

    def test_a_paragraph_of_a_comment_is_filled_anew_and_its_neighbours_stay(self):
        self.check(
            f"/// The first\n/// paragraph.\n///\n/// The animals of {LONG}, which is one of several, like\n"
            "/// it.",
            "/// The first",
            "/// paragraph.",
            "///",
            f"/// The animals of {LONG}, which is one of several,",
            "/// like it.",
        )

    def test_commas_and_brackets_in_literals_break_nothing(self):
        literal = '"' + "a, (b : c = <d " * 5 + '\\""'
        self.check(f"f(one, {literal}, two, three, four);", f"f(one, {literal}, two, three,", "    four);")

    def test_what_cannot_be_broken_stays(self):
        for line in (f'#include "{LONG * 2}, {LONG}.h"', "    " + "a" * 120 + ";"):
            self.check(line, line)


class Metamodel(unittest.TestCase):
    """Over all that is generated: lines are broken, and nothing else happens to them."""

    def test_a_break_changes_white_space_only(self):
        renderer = outputs.Renderer(lambda text: text)
        for model in ("foundation.toml", "types.toml"):
            for output in outputs.outputs(loader.load(METAMODEL / model)):
                text = renderer.render(output)
                self.assertEqual(unbroken(text), unbroken(layout.wrapped(text)), output.path)

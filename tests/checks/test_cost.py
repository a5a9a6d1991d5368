import unittest

from velum_checks.cost import compare, counts_in, parse


class Cost(unittest.TestCase):
    def test_a_part_counts_what_the_part_before_names(self) -> None:
        parts = [
            "part: 3\ndesc: Trigger: --dump-before=cost_end\nevents: Ir D1mr\ntotals: 68000 500\n",
            "part: 1\ndesc: Trigger: --dump-before=cost_get\nevents: Ir D1mr\ntotals: 13925981 7\n",
            "desc: Trigger: Program termination\nevents: Ir D1mr\ntotals: 9 0\n",
            "part: 2\ndesc: Trigger: --dump-before=cost_set\nevents: Ir D1mr\ntotals: 26012 2000\n",
        ]
        self.assertEqual(
            counts_in(parts, 1000),
            {"get": {"Ir": 26.012, "D1mr": 2}, "set": {"Ir": 68, "D1mr": 0.5}})

    def test_counts_may_differ_by_three_percent_in_both_directions(self) -> None:
        compiler, expected = parse("# g++ 12.2.0\nget 100\nset 100\nmove 100\nundo 5\n")
        self.assertEqual(compiler, "g++ 12.2.0")
        self.assertEqual(
            compare(expected, {"get": 103, "set": 104, "move": 96, "destroy": 7}),
            [
                "destroy: is not in the list",
                "move: 96 instructions, 100 in the list (-4.0%)",
                "set: 104 instructions, 100 in the list (+4.0%)",
                "undo: is gone",
            ],
        )

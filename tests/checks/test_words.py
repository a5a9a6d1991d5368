from sandbox import Sandbox
from velum_checks.words import CHECK

# Written in pieces: this file must pass the check itself.
DOCUMENT = "spec"
FORBIDDEN = (
    f"see {DOCUMENT}.md",
    f"as the {DOCUMENT} says",
    f"the {DOCUMENT.upper()}IFICATION",
    f"two {DOCUMENT}s",
    "see Part" + " 3.2 of it",
    "Parts" + " 1.1 and 1.8",
    "the requirement" + " document",
)
HARMLESS = (
    "class ValueSpecification;",
    "a special case, specified once, for a specific type",
    "template specialization",
    "Part of the model, version 1.2",
    "inspect the species",
)


class Words(Sandbox):
    def test_each_forbidden_form_is_found_with_its_place(self) -> None:
        for text in FORBIDDEN:
            with self.subTest(text):
                self.write("docs/notes.md", f"first line\n{text}\n")
                self.assertEqual([f"docs/notes.md:2: {text}"], CHECK.find(self.project))

    def test_class_names_and_common_words_pass(self) -> None:
        self.write("docs/notes.md", "\n".join(HARMLESS))
        self.assertEqual([], CHECK.find(self.project))

    def test_documentation_texts_of_the_metamodel_pass(self) -> None:
        self.write("metamodel/types.toml", FORBIDDEN[1])
        self.assertEqual([], CHECK.find(self.project))

    def test_file_names_are_read_too(self) -> None:
        self.write(f"docs/{DOCUMENT}.md", "text")
        self.assertEqual(1, len(CHECK.find(self.project)))

    def test_commit_messages_are_read_to_their_last_line(self) -> None:
        self.commit(f"Add a thing\n\nIt does what\n{FORBIDDEN[1]}.")
        findings = CHECK.find(self.project)
        self.assertEqual(1, len(findings))
        self.assertRegex(findings[0], rf"^commit [0-9a-f]+: {FORBIDDEN[1]}\.$")

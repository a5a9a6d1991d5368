"""Puts a prefix before the names of all computation methods: bulk_rename.py PREFIX TARGET FILE...

The names are changed in a branch. Only if that brings no new error, the branch is merged and the model
is written to the target.
"""

import sys

import velum


def main(prefix: str, target: str, files: list[str]) -> int:
    model, _ = velum.read(files)
    errors_before = len(velum.check(model).errors)
    with model.branch() as draft:
        for method in draft.objects(velum.CompuMethod):
            method.name = f"{prefix}{method.name}"
        new_errors = velum.check(draft).errors[errors_before:]
        if new_errors:
            for issue in new_errors:
                print(f"{issue.path}: {issue.text}", file=sys.stderr)
            return 1
        changed = len(velum.diff(model, draft).rows())
        model.merge(draft)
    report = velum.write(model, target)
    print(f"{changed} differences, {report.objects} elements written.")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2], sys.argv[3:]))

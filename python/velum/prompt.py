"""A prompt with files read: `python3 -i -m velum.prompt FILE...`, or `./dev run python`."""

import sys

import velum

if __name__ == "__main__":
    if len(sys.argv) > 1:
        model, report = velum.read(sys.argv[1:])
        findings = f"`report` has {len(report.rows())} findings, {len(report.faults)} of them faults.\n"
    else:
        model = velum.Model()
        findings = ""
    print(
        f"velum is imported; `model` is {model!r}.\n"
        f"{findings}"
        "Try:\n"
        "    model.objects(velum.Enumeration)\n"
        "    print(model.objects(velum.CompuMethod)[0].describe())\n"
        "    help(velum.Integer)"
    )

"""Puts the style sheets and the script of a page into a C++ source.

usage: embed.py OUTPUT PAGE.css PICTURE.css PAGE.js
"""

import base64
import hashlib
import pathlib
import sys

# A string literal may be too long for a compiler, several beside each other are one.
LINE = 80


def literal(text):
    data = text.encode()
    lines = []
    for start in range(0, len(data), LINE):
        piece = "".join(chr(b) if 32 <= b < 127 and chr(b) not in '"\\?' else f"\\{b:03o}"
                        for b in data[start:start + LINE])
        lines.append(f'    "{piece}"')
    return "\n".join(lines) or '    ""'


def digest(text):
    return "'sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode() + "'"


def main(output, page, picture, script):
    page, picture, script = (pathlib.Path(name).read_text(encoding="utf-8").strip() + "\n"
                             for name in (page, picture, script))
    policy = (f"default-src 'none'; style-src {digest(page + picture)}; "
              f"script-src {digest(script)}; base-uri 'none'; form-action 'none'")
    texts = {"pageStyle": page + picture, "pictureStyle": picture, "pageScript": script,
             "pagePolicy": policy}
    source = '// Made by embed.py.\n#include "html/assets.h"\n\nnamespace velum::html {\n\n'
    for name, text in texts.items():
        source += f"const std::string_view {name} =\n{literal(text)};\n\n"
    pathlib.Path(output).write_text(source + "} // namespace velum::html\n", encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    main(*sys.argv[1:])

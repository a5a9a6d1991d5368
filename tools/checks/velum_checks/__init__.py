"""The project's checks of itself: what a compiler does not say, in one place and quick.

Each module holds one check. A check returns its findings, one line each, and names the command
that repairs them.
"""

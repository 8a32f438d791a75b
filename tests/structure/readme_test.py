"""Folders of more than six files say in a README.md what stands in them; that of the kernels names every family's files.

usage: readme_test.py ROOT
"""
import pathlib
import re
import sys

root = pathlib.Path(sys.argv[1])
folders = [path for top in ("bench", "cmake", "docs", "examples", "include", "src", "tests")
           for path in (root / top, *(root / top).rglob("*/")) if path.is_dir() and path.name != "__pycache__"]
bare = [str(folder.relative_to(root)) for folder in folders
        if sum(file.is_file() for file in folder.iterdir()) > 6 and not (folder / "README.md").is_file()]
if bare:
    sys.exit("without a README.md: " + ", ".join(bare))

kernels = root / "src/bailuxsko/kernels"
named = set(re.findall(r"`(\w+)`", (kernels / "README.md").read_text()))
present = {file.stem for file in kernels.glob("*.[ch]pp")}
if named != present:
    sys.exit(f"src/bailuxsko/kernels/README.md: {', '.join(sorted(named ^ present))} named or present, not both")

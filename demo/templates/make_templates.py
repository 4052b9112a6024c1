#!/usr/bin/env python3
"""Makes the Word templates from their sources, with LibreOffice and rsvg-convert.

The sources are flat OpenDocument texts (.fodt), which anybody can read and edit. The results are checked in,
so that neither the demonstration nor the tests need this script:

    letter.fodt                        RELVEH.dot   binary Word 97 format
                                       RELVEH2.dot  today's format under the same extension
    tests/word/templates/NAME.fodt     NAME.dot, NAME-2007.dot likewise
"""

import base64
import pathlib
import re
import shutil
import subprocess
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
BINARY = ("dot", "MS Word 97 Vorlage")
TODAY = ("dotx", "MS Word 2007 XML Template")


def logo():
    """The program's icon as a picture that every word processor shows."""
    icon = ROOT / "resources" / "icons" / "application.svg"
    picture = subprocess.run(["rsvg-convert", "--width=384", str(icon)], check=True, capture_output=True).stdout
    return base64.b64encode(picture).decode("ascii")


def with_one_header(source):
    """The same text with the first page's header and footer on all pages.

    Out of the binary format LibreOffice reads a first page's own header without its bookmarks.
    """
    for part in ("header", "footer"):
        source = re.sub(f"<style:{part}>.*?</style:{part}>", "", source, flags=re.DOTALL)
        source = source.replace(f"style:{part}-first>", f"style:{part}>")
    return source


def convert(source, target, kind):
    """Writes the template `target` of the given kind from the text `source`."""
    extension, document_filter = kind
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        text = folder / "template.fodt"
        text.write_text(source, encoding="utf-8")
        subprocess.run(
            ["soffice", f"-env:UserInstallation={(folder / 'profile').as_uri()}", "--headless",
             "--convert-to", f"{extension}:{document_filter}", "--outdir", str(folder), str(text)],
            check=True, stdout=subprocess.DEVNULL)
        shutil.copyfile(folder / f"template.{extension}", target)


def main():
    letter = (HERE / "letter.fodt").read_text(encoding="utf-8").replace("@LOGO@", logo())
    convert(with_one_header(letter), HERE / "RELVEH.dot", BINARY)
    convert(letter, HERE / "RELVEH2.dot", TODAY)
    for path in sorted((ROOT / "tests" / "word" / "templates").glob("*.fodt")):
        source = path.read_text(encoding="utf-8")
        convert(source, path.with_suffix(".dot"), BINARY)
        convert(source, path.with_name(path.stem + "-2007.dot"), TODAY)


if __name__ == "__main__":
    main()

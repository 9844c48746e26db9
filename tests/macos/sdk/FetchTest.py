import io
import tarfile
import tempfile
import unittest
from pathlib import Path

import toy  # for the checks' folder
import fetch


class Fetch(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def archive(self, **files):
        path = self.folder / "package.tgz"
        with tarfile.open(path, "w:gz") as packed:
            for name, text in files.items():
                member = tarfile.TarInfo(name)
                member.size = len(text)
                packed.addfile(member, io.BytesIO(text.encode()))
        return path

    def testOnlyDeclarationsAreUnpacked(self):
        archive = self.archive(**{"package/types/Toy.d.ts": "toy", "package/index.js": "evil()", "package/types/run.js": "evil()",
                                  "package/types/../../../Out.d.ts": "out", "types/Other.d.ts": "other"})
        fetch.unpack(archive, self.folder / "types")
        self.assertEqual([path.name for path in (self.folder / "types").rglob("*")], ["Toy.d.ts"])
        self.assertFalse((self.folder.parent / "Out.d.ts").exists())

    def testAnotherPackageIsRefused(self):
        fetch.verify(b"toy", "sha256-D1MTPOV8qOiTe7SxwVoz75WUcE4cEavVjlmLuDYvc4U=")
        with self.assertRaisesRegex(fetch.Missing, "another package"):
            fetch.verify(b"toys", "sha256-D1MTPOV8qOiTe7SxwVoz75WUcE4cEavVjlmLuDYvc4U=")

    def testKeptDeclarationsAreNotBroughtAgain(self):
        kept = self.folder / fetch.VERSION
        kept.mkdir()
        self.assertEqual(fetch.declarations(self.folder), kept)


if __name__ == "__main__":
    unittest.main()

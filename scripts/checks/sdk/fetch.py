"""Downloads the published declarations of the SDK with npm. Only the declarations are unpacked; nothing of the package is
run."""

import base64
import hashlib
import os
import shutil
import subprocess
import tarfile
import tempfile
from pathlib import Path

PACKAGE = "@nativescript/macos-node-api"
VERSION = "0.4.0"
# What npm publishes as the package's dist.integrity.
INTEGRITY = "sha512-UQmVtBdeNiEV/gssJPeXYHInb2RibEb59UVMC+VVjdMSpTpInpXzs6QoHmaAGx/gO6P8U6BRwDjYYZ7OQvi1bw=="
INSIDE = "package/types/"
ATTEMPTS = 3


class Missing(Exception):
    """The declarations are missing and could not be downloaded; the text says why."""


def cacheFolder():
    """Where declarations are kept from one build to the next."""
    return Path(os.environ.get("XDG_CACHE_HOME") or Path.home() / ".cache") / "fernhop-sdk-declarations"


def declarations(cache):
    """The folder with the declarations below `cache`; downloaded when it is missing."""
    folder = cache / VERSION
    if not folder.is_dir():
        cache.mkdir(parents=True, exist_ok=True)
        with tempfile.TemporaryDirectory(dir=cache) as temporary:
            archive = _pack(Path(temporary))
            verify(archive.read_bytes(), INTEGRITY)
            unpack(archive, Path(temporary) / "types")
            _settle(Path(temporary) / "types", folder)
    return folder


def _pack(folder):
    if not shutil.which("npm"):
        raise Missing("npm is not installed")
    command = ["npm", "pack", f"{PACKAGE}@{VERSION}", "--ignore-scripts", "--loglevel=error", "--pack-destination", str(folder)]
    said = ""
    for _ in range(ATTEMPTS):
        done = subprocess.run(command, cwd=folder, capture_output=True, encoding="utf-8", errors="replace", check=False)
        found = list(folder.glob("*.tgz"))
        if done.returncode == 0 and found:
            return found[0]
        said = (done.stderr or done.stdout).strip()
    raise Missing(f"npm could not bring {PACKAGE} {VERSION}: {said or 'it said nothing'}")


def verify(data, integrity):
    """Rejects a package whose checksum is not the recorded one."""
    kind, _, wanted = integrity.partition("-")
    found = base64.b64encode(hashlib.new(kind, data).digest()).decode()
    if found != wanted:
        raise Missing(f"what npm brought as {PACKAGE} {VERSION} is another package: its {kind} is {found}")


def unpack(archive, folder):
    """Takes the declaration files out of the package, and nothing else."""
    folder.mkdir()
    with tarfile.open(archive) as packed:
        for member in packed:
            name = member.name.removeprefix(INSIDE)
            if member.isfile() and member.name == INSIDE + name and name.endswith(".d.ts") and "/" not in name:
                (folder / name).write_bytes(packed.extractfile(member).read())


def _settle(made, folder):
    """Two checks may download the declarations at once: those of the first are kept."""
    try:
        made.rename(folder)
    except OSError:
        if not folder.is_dir():
            raise

"""Builds the wheel with CMake: a build backend (PEP 517) that needs nothing but this interpreter.

The wheel carries the package, the extension and libzel beside it.
"""

from __future__ import annotations

import base64
import hashlib
import os
import re
import subprocess
import sys
import sysconfig
import tempfile
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent


def _version() -> str:
    found = re.search(r"project\(zel VERSION ([0-9.]+)", (ROOT / "CMakeLists.txt").read_text())
    assert found, "CMakeLists.txt names no version"
    return found[1]


def _tag() -> str:
    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    platform = sysconfig.get_platform().replace("-", "_").replace(".", "_")
    return f"{python}-{python}-{platform}"


def _metadata() -> str:
    return (f"Metadata-Version: 2.1\nName: zel\nVersion: {_version()}\n"
            "Summary: Meshes of nodes, triangles and quads as values over NumPy arrays\n"
            "Requires-Python: >=3.11\nRequires-Dist: numpy\n")


def _install_package(build: Path, prefix: Path) -> None:
    """Builds the module and puts the package with its library into prefix/zel."""
    configure = ["cmake", "-S", str(ROOT), "-B", str(build), "-G", "Ninja",
                 "-DCMAKE_BUILD_TYPE=Release", "-DZEL_BUILD_PYTHON=ON", "-DZEL_BUILD_TESTS=OFF",
                 "-DZEL_BUILD_EXAMPLES=OFF", f"-DPython3_EXECUTABLE={sys.executable}",
                 "-DZEL_PYTHON_DESTINATION=.", "-DZEL_PYTHON_RPATH=$ORIGIN",
                 "-DCMAKE_INSTALL_LIBDIR=zel"]
    for command in (configure, ["cmake", "--build", str(build), "--target", "zel_python"],
                    *(["cmake", "--install", str(build), "--prefix", str(prefix), "--strip",
                       "--component", part] for part in ("library", "python"))):
        subprocess.run(command, check=True)


def build_wheel(wheel_directory: str, config_settings: object = None,
                metadata_directory: str | None = None) -> str:
    """Builds the wheel. Returns its file name."""
    name = f"zel-{_version()}-{_tag()}.whl"
    build = Path(os.environ.get("ZEL_WHEEL_BUILD", "") or tempfile.mkdtemp(prefix="zel-wheel-"))
    with tempfile.TemporaryDirectory() as prefix:
        _install_package(build, Path(prefix))
        package = Path(prefix) / "zel"
        records = []
        with zipfile.ZipFile(Path(wheel_directory) / name, "w", zipfile.ZIP_DEFLATED) as wheel:

            def add(path: str, content: bytes) -> None:
                digest = base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=")
                records.append(f"{path},sha256={digest.decode()},{len(content)}")
                wheel.writestr(path, content)

            for file in sorted(package.rglob("*")):
                # Of the library's names the one that the loader asks for is enough.
                if file.is_file() and not (file.is_symlink() and file.suffix == ".so"):
                    if not re.search(r"\.so\.\d+\.\d+\.\d+$", file.name):
                        add(f"zel/{file.relative_to(package)}", file.read_bytes())
            info = f"zel-{_version()}.dist-info"
            add(f"{info}/METADATA", _metadata().encode())
            add(f"{info}/WHEEL", f"Wheel-Version: 1.0\nGenerator: zel\n"
                                 f"Root-Is-Purelib: false\nTag: {_tag()}\n".encode())
            records.append(f"{info}/RECORD,,")
            wheel.writestr(f"{info}/RECORD", "\n".join(records) + "\n")
    return name

#!/usr/bin/env python3
"""zip_folder.py FOLDER SECONDS: makes FOLDER.zip. The same files give the same bytes: names are sorted, and the only time
stored is SECONDS since 1970, in UTC."""
import pathlib
import sys
import time
import zipfile

folder = pathlib.Path(sys.argv[1])
date = time.gmtime(int(sys.argv[2]))[:6]
with zipfile.ZipFile(f"{folder}.zip", "w", zipfile.ZIP_DEFLATED) as archive:
    for file in sorted(path for path in folder.rglob("*") if path.is_file()):
        entry = zipfile.ZipInfo(file.relative_to(folder.parent).as_posix(), date)
        entry.compress_type = zipfile.ZIP_DEFLATED
        entry.external_attr = 0o100644 << 16
        archive.writestr(entry, file.read_bytes())

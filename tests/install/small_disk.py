"""A disk that is nearly full, for tests."""

import resource
import subprocess


def small_disk(folder, size):
    """Mounts a disk of that many bytes; a limit on file sizes stands in where mounting is not
    allowed. Gives back what to undo and what a command has to do first."""
    mounted = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size},mode=777", "none", folder],
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                             check=False).returncode == 0
    if mounted:
        return lambda: subprocess.run(["umount", "-l", folder], check=True), None
    return lambda: None, lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))

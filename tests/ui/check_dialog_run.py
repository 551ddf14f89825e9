"""Checks what the dialog run left: the host codes of a Test and a Build,
and that the Test, the Build and the headless renderer wrote the same
animation, frame by frame in decoded pixels and delays."""
import os
import sys

from PIL import Image, ImageSequence

failures = 0


def check(condition, what):
    global failures
    print(("ok: " if condition else "FAIL: ") + what)
    if not condition:
        failures += 1


def host_codes(log_path):
    with open(log_path, encoding="latin-1") as log:
        for line in log:
            if line.startswith("codes:"):
                return [int(word) for word in line.split()[1:]]
    return []


def frames(path):
    with Image.open(path) as image:
        return [(frame.convert("RGBA").tobytes(), frame.info.get("duration")) for frame in ImageSequence.Iterator(image)]


def main(out):
    codes = host_codes(os.path.join(out, "host.log"))
    print("codes:", " ".join(map(str, codes)))
    check(len(codes) > 0, "the host reported its codes")
    # Each press starts with 18; the frames are rendered before the task opens.
    runs = []
    for code in codes:
        if code == 18:
            runs.append([])
        if runs:
            runs[-1].append(code)
    check(len(runs) == 2, "two runs, each announced by 18")
    check(11 in codes[:codes.index(18)] if 18 in codes else False, "the fill swatch asked for a colour (11)")
    if len(runs) == 2:
        test, build = runs
        check(5 in test and 1 not in test, "Test opens a test task (5)")
        check(1 in build and 5 not in build, "Build opens a task (1)")
        check(test[-1] == 4 and build[-1] == 4, "each run closes its task (4)")
        check(test.count(2) == build.count(2) > 0, "Test and Build pass the same number of images (2)")
        check(test.count(13) > 0, "the runs report progress (13)")

    paths = {name: os.path.join(out, name + ".gif") for name in ("test", "build", "render")}
    for name, path in paths.items():
        check(os.path.exists(path), name + ".gif was written")
    if all(os.path.exists(path) for path in paths.values()):
        build = frames(paths["build"])
        print("build.gif: %d frames" % len(build))
        check(len(build) > 1, "the Build is animated")
        check(frames(paths["test"]) == build, "Test and Build wrote the same frames")
        check(frames(paths["render"]) == build, "the headless renderer wrote the same frames as the Build")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))

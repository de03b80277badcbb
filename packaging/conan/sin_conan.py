# Reads the recipe with stand-ins for Conan's classes (tools/package --check): that it is Python, finds the version and the
# sources, asks for options that there are, and refuses what it must refuse.
#     python3 packaging/conan/sin_conan.py VERSION
import os
import re
import sys
import tempfile
import types


class Wrong(Exception):
    pass


class Settings:
    def __init__(self, os_name, arch):
        self.os = os_name
        self.arch = arch


class Toolchain:
    def __init__(self, recipe):
        self.cache_variables = recipe.asked = {}

    def generate(self):
        pass


copied = []


def copy(recipe, pattern, src, dst):
    folder = os.path.join(src, pattern.split("/")[0])
    if not os.path.exists(folder):
        raise Wrong(pattern + " is not there")
    copied.append(pattern)


for name, members in {
    "conan": {"ConanFile": object},
    "conan.errors": {"ConanInvalidConfiguration": Wrong},
    "conan.tools": {},
    "conan.tools.cmake": {"CMake": object, "CMakeToolchain": Toolchain, "cmake_layout": None},
    "conan.tools.files": {"copy": copy, "load": lambda recipe, path: open(path, encoding="utf-8").read()},
}.items():
    sys.modules[name] = types.ModuleType(name)
    sys.modules[name].__dict__.update(members)

sys.dont_write_bytecode = True
here = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, here)
import conanfile  # noqa: E402

recipe = conanfile.LumodirConan()
recipe.recipe_folder = here
recipe.set_version()
if recipe.version != sys.argv[1]:
    sys.exit("conanfile.py: version %s instead of %s" % (recipe.version, sys.argv[1]))
recipe.export_sources_folder = tempfile.gettempdir()
recipe.export_sources()
if "src/*" not in copied or "CMakeLists.txt" not in copied:
    sys.exit("conanfile.py does not export the sources")
recipe.generate()
with open(os.path.join(here, "..", "..", "CMakeLists.txt"), encoding="utf-8") as project:
    unknown = set(recipe.asked) - set(re.findall(r"^option\((\w+)", project.read(), re.MULTILINE))
if unknown:
    sys.exit("conanfile.py: no such option: " + ", ".join(sorted(unknown)))
if recipe.asked.get("LUMODIR_AVISOS_SON_ERRORES") is not False:
    sys.exit("conanfile.py: what another compiler warns of would stop it")
recipe.settings = Settings("Windows", "x86_64")
recipe.validate()
for settings in (Settings("Linux", "x86_64"), Settings("Windows", "armv8")):
    recipe.settings = settings
    try:
        recipe.validate()
    except Wrong:
        continue
    sys.exit("conanfile.py takes %s %s" % (settings.os, settings.arch))

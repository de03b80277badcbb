# A recipe for Conan 2, for the sources that it lies in:
#     conan create packaging/conan
# tools/package reads it with a stand-in for Conan's classes; nobody has run Conan on it.
import os

from conan import ConanFile
from conan.errors import ConanInvalidConfiguration
from conan.tools.cmake import CMake, CMakeToolchain, cmake_layout
from conan.tools.files import copy, load


class LumodirConan(ConanFile):
    name = "lumodir"
    description = "File-system services for desktop applications on Windows x64"
    package_type = "shared-library"
    settings = "os", "arch", "compiler", "build_type"
    # No licence has been granted yet.
    license = "NONE"

    def _root(self):
        return os.path.normpath(os.path.join(self.recipe_folder, "..", ".."))

    def set_version(self):
        numbers = {}
        for line in load(self, os.path.join(self._root(), "include", "lumodir_base.h")).splitlines():
            words = line.split()
            if len(words) > 2 and words[0] == "#define" and words[1].startswith("LUMODIR_VERSION_"):
                numbers[words[1]] = words[2]
        self.version = ".".join(numbers["LUMODIR_VERSION_" + part] for part in ("MAJOR", "MINOR", "PATCH"))

    def export_sources(self):
        for folder in ("apps", "cmake", "docs", "examples", "include", "packaging", "share", "src"):
            copy(self, folder + "/*", src=self._root(), dst=self.export_sources_folder)
        for file in ("CMakeLists.txt", "CHANGELOG.md"):
            copy(self, file, src=self._root(), dst=self.export_sources_folder)

    def validate(self):
        if self.settings.os != "Windows" or self.settings.arch != "x86_64":
            raise ConanInvalidConfiguration("lumodir is a library for Windows x64")

    def layout(self):
        cmake_layout(self)

    def generate(self):
        toolchain = CMakeToolchain(self)
        # The library alone; a compiler that warns of more than the project's own does not stop it.
        for option in ("TESTS", "BENCH", "ORDEN", "AVISOS_SON_ERRORES"):
            toolchain.cache_variables["LUMODIR_" + option] = False
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        # The project's own package file, lib/cmake/lumodir/lumodirConfig.cmake.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = ["lib/cmake/lumodir"]
        self.cpp_info.includedirs = ["include/lumodir"]
        self.cpp_info.libs = ["lumodir"]

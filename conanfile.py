"""The dependencies, for Conan 2.25 and newer. docs/installation.md shows the commands."""

from conan import ConanFile
from conan.tools.cmake import CMakeConfigDeps, CMakeToolchain
from conan.tools.gnu import PkgConfigDeps


class VerdixFactorySettings(ConanFile):
    settings = "os", "arch", "compiler", "build_type"
    options = {"framework": ["embedded", "system"], "tests": [True, False]}
    default_options = {"framework": "embedded", "tests": False}

    def requirements(self):
        # All libraries must share one Boost.Log, and all bundles one service framework.
        self.requires("boost/[>=1.81]", options={"shared": True, "without_nowide": False})
        self.requires("cli11/[>=2.1 <3]")
        if self.options.framework == "system":
            self.requires("cppmicroservices/[>=3.8 <3.9]", options={"shared": True})
        if self.options.framework == "embedded" or self.options.tests:
            self.requires("minizip/[>=1.2.11 <2]")

    def build_requirements(self):
        if self.options.tests:
            self.test_requires("gtest/[>=1.12]")

    def generate(self):
        toolchain = CMakeToolchain(self)
        toolchain.user_presets_path = False  # the project has presets of its own
        toolchain.generate()
        CMakeConfigDeps(self).generate()
        PkgConfigDeps(self).generate()

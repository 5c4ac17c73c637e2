# The service framework: an installed CppMicroServices 3.8 where there is one, else the embedded stand-in.
#
# Defines the target vx::service_framework (headers and libraries of the framework and of its component
# runtime's interface) and the function vx_add_bundle_manifest(TARGET MANIFEST).

find_package(CppMicroServices 3.8 QUIET)

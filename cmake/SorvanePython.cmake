# Looks for what the Python module is built with; SORVANE_HAS_PYTHON says whether it can be. Instrumented builds have
# none: an interpreter lacks their run-time libraries.
option(SORVANE_PYTHON "Build the Python module (needs pybind11, Python's headers and NumPy)" ON)
set(SORVANE_HAS_PYTHON OFF)
if(NOT SORVANE_PYTHON OR SORVANE_SANITIZE OR SORVANE_COVERAGE OR SORVANE_FUZZ)
  return()
endif()

# Debian's own interpreter, for which its packages are made, even where another one comes first in the path.
if(NOT Python_EXECUTABLE AND EXISTS /usr/bin/python3)
  set(Python_EXECUTABLE /usr/bin/python3)
endif()
find_package(Python 3.9 QUIET COMPONENTS Interpreter Development.Module NumPy)
find_package(pybind11 2.10 QUIET CONFIG)
if(NOT Python_FOUND OR NOT pybind11_FOUND)
  message(STATUS "No Python module: pybind11, Python's headers or NumPy is missing "
                 "(packages pybind11-dev, python3-dev, python3-numpy)")
  return()
endif()
message(STATUS "Python module: for ${Python_EXECUTABLE} (${Python_VERSION})")
set(SORVANE_HAS_PYTHON ON)

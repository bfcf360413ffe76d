# Stops before the first file on a compiler that the sources can't be built with.
include(CheckCXXSourceCompiles)

check_cxx_source_compiles(
  "using Quad = float __attribute__((vector_size(16)));
   Quad mixed(Quad a, Quad b) { return __builtin_shufflevector(a, b, 0, 4, 1, 5) * a; }
   int main() { return static_cast<int>(mixed(Quad{}, Quad{})[0]); }"
  SORVANE_HAS_VECTORS)
if(NOT SORVANE_HAS_VECTORS)
  message(
    FATAL_ERROR
      "${CMAKE_CXX_COMPILER_ID} ${CMAKE_CXX_COMPILER_VERSION} lacks the vector extensions (vector_size and "
      "__builtin_shufflevector) that the reflectance model is written with. GCC 12 and clang 14 have them, "
      "and later ones.")
endif()

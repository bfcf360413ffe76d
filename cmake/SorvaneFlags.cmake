# The flags of every target, in one interface library: link sorvane_flags.
add_library(sorvane_flags INTERFACE)

# Results are compared bit for bit, so the compiler may neither fuse multiply and add nor relax IEEE rules.
target_compile_options(
  sorvane_flags
  INTERFACE -ffp-contract=off
            -fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=
            -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wold-style-cast
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wformat=2
            -Wnull-dereference)
if(SORVANE_WERROR)
  target_compile_options(sorvane_flags INTERFACE -Werror)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 warns about null dereferences inside the standard library and Qt, and about overlapping copies inside the
  # concatenation of strings, once they are inlined.
  target_compile_options(sorvane_flags INTERFACE -Wno-null-dereference -Wno-restrict -Wduplicated-cond -Wlogical-op)
endif()

# Hardening, which the sanitizers and the counters of coverage take the place of. The programs are position-independent
# with -fPIC: with -fPIE they would hold copies of Qt's meta-objects, by which Qt's look-up of children finds nothing.
# Nobody replaces our functions at run time: hidden, they are inlined and called as in code that stays where it is.
if(NOT SORVANE_SANITIZE AND NOT SORVANE_COVERAGE)
  set(hardened $<NOT:$<CONFIG:Debug>>) # the library's checks need optimised code
  target_compile_options(
    sorvane_flags
    INTERFACE $<${hardened}:-U_FORTIFY_SOURCE>
              $<${hardened}:-D_FORTIFY_SOURCE=2>
              $<${hardened}:-fstack-protector-strong>
              $<${hardened}:-fPIC>
              $<${hardened}:-fvisibility=hidden>
              $<${hardened}:-fno-semantic-interposition>)
  set(program $<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>)
  target_link_options(sorvane_flags INTERFACE $<$<AND:${hardened},${program}>:-pie> LINKER:-z,relro,-z,now)
endif()

if(SORVANE_SANITIZE)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With sanitizers on, GCC 12 takes parts of the standard library for uninitialised.
    target_compile_options(sorvane_flags INTERFACE -Wno-maybe-uninitialized)
  endif()
  target_compile_options(sorvane_flags INTERFACE -fsanitize=${SORVANE_SANITIZE} -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=undefined)
  target_link_options(sorvane_flags INTERFACE -fsanitize=${SORVANE_SANITIZE})
endif()

if(SORVANE_COVERAGE)
  target_compile_options(sorvane_flags INTERFACE --coverage)
  target_link_options(sorvane_flags INTERFACE --coverage)
endif()

if(SORVANE_FUZZ)
  target_compile_options(sorvane_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

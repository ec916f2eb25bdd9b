# Checks that lumotypes can be used from outside its own build. Run with cmake -P; the
# variables come from tests/packaging/CMakeLists.txt. STEP is one of
#   install       cmake --install of the build tree into WORK_DIR/prefix, then the layout
#   find_package  a consumer project that finds the installed package and runs
#   pkg_config    the same program compiled with the flags of the installed .pc file
#   subdir        a consumer project that pulls the source tree in with add_subdirectory
cmake_minimum_required(VERSION 3.25)

set(prefix "${WORK_DIR}/prefix")
separate_arguments(extra_flags UNIX_COMMAND "${EXTRA_CXX_FLAGS}")
separate_arguments(extra_link UNIX_COMMAND "${EXTRA_LINK_FLAGS}")

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc)
  if(NOT rc EQUAL 0)
    list(JOIN ARGN " " line)
    message(FATAL_ERROR "failed (${rc}): ${line}")
  endif()
endfunction()

function(expect_file path)
  if(NOT EXISTS "${path}")
    message(FATAL_ERROR "missing after install: ${path}")
  endif()
endfunction()

# Configures, builds and runs a small CMake project in WORK_DIR/<name>.
function(build_consumer name source)
  set(dir "${WORK_DIR}/${name}")
  run(${CMAKE_COMMAND} -S "${source}" -B "${dir}" -G "${GENERATOR}" ${ARGN}
      "-DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}"
      "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}"
      "-DCMAKE_BUILD_TYPE=${BUILD_TYPE}"
      "-DCMAKE_CXX_FLAGS=${EXTRA_CXX_FLAGS}"
      "-DCMAKE_EXE_LINKER_FLAGS=${EXTRA_LINK_FLAGS}"
      "-DCMAKE_SHARED_LINKER_FLAGS=${EXTRA_LINK_FLAGS}")
  run(${CMAKE_COMMAND} --build "${dir}")
  run("${dir}/lmconsumer")
endfunction()

if(STEP STREQUAL "install")
  file(REMOVE_RECURSE "${WORK_DIR}")
  run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}")

  foreach(header lumotypes.h lmtypemgr.h lmdefs.h lumobase.h lumoi18n.h)
    expect_file("${prefix}/${INCLUDEDIR}/lumotypes/${header}")
  endforeach()
  foreach(lib lumotypes lumobase lumoi18n)
    expect_file("${prefix}/${LIBDIR}/lib${lib}.so")
    expect_file("${prefix}/${LIBDIR}/lib${lib}.so.${VERSION_MAJOR}")
    expect_file("${prefix}/${LIBDIR}/lib${lib}.so.${VERSION}")
  endforeach()
  set(cmakedir "${prefix}/${LIBDIR}/cmake/lumotypes")
  expect_file("${cmakedir}/lumotypesConfig.cmake")
  expect_file("${cmakedir}/lumotypesConfigVersion.cmake")
  expect_file("${prefix}/${LIBDIR}/pkgconfig/lumotypes.pc")

  # The private compiler settings of the project and any path of the build machine
  # must stay out of the installed package files.
  file(GLOB package_files "${cmakedir}/*.cmake" "${prefix}/${LIBDIR}/pkgconfig/*.pc")
  foreach(file IN LISTS package_files)
    file(READ "${file}" text)
    foreach(leak lumotypes_flags "${SOURCE_DIR}" "${BUILD_DIR}" "${WORK_DIR}" "-Werror" "-fsanitize")
      string(FIND "${text}" "${leak}" at)
      if(NOT at EQUAL -1)
        message(FATAL_ERROR "${file} mentions ${leak}")
      endif()
    endforeach()
  endforeach()

  # The shared object name carries the major version only.
  if(READELF)
    execute_process(COMMAND "${READELF}" -d "${prefix}/${LIBDIR}/liblumotypes.so"
                    OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)
    if(NOT dynamic MATCHES "Library soname: \\[liblumotypes\\.so\\.${VERSION_MAJOR}\\]")
      message(FATAL_ERROR "liblumotypes.so has the wrong soname:\n${dynamic}")
    endif()
  endif()

elseif(STEP STREQUAL "find_package")
  # Only the temporary prefix may provide the package, not a copy installed on the machine.
  build_consumer(find-package "${SOURCE_DIR}/tests/packaging/consumer"
                 "-DCMAKE_PREFIX_PATH=${prefix}"
                 -DCMAKE_FIND_USE_CMAKE_SYSTEM_PATH=OFF
                 -DCMAKE_FIND_USE_SYSTEM_ENVIRONMENT_PATH=OFF
                 -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF
                 -DCMAKE_FIND_USE_SYSTEM_PACKAGE_REGISTRY=OFF)

elseif(STEP STREQUAL "pkg_config")
  if(NOT PKG_CONFIG)
    message("pkg-config is not installed: skipped")
    return()
  endif()
  set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig")
  execute_process(COMMAND "${PKG_CONFIG}" --cflags --libs lumotypes
                  OUTPUT_VARIABLE pc_flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND "${PKG_CONFIG}" --variable=includedir lumotypes
                  OUTPUT_VARIABLE pc_include OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  file(REAL_PATH "${pc_include}" pc_include)
  file(REAL_PATH "${prefix}/${INCLUDEDIR}/lumotypes" want_include)
  if(NOT pc_include STREQUAL want_include)
    message(FATAL_ERROR "lumotypes.pc points at ${pc_include}, not at the prefix it was installed to")
  endif()
  separate_arguments(pc_flags UNIX_COMMAND "${pc_flags}")
  set(exe "${WORK_DIR}/pkg-config/lmconsumer")
  file(MAKE_DIRECTORY "${WORK_DIR}/pkg-config")
  run("${CXX_COMPILER}" ${extra_flags} "${SOURCE_DIR}/tests/packaging/consumer/main.cpp" -o "${exe}"
      ${pc_flags} ${extra_link})
  # pkg-config gives no run path; the loader is told where the prefix lies.
  set(ENV{LD_LIBRARY_PATH} "${prefix}/${LIBDIR}")
  run("${exe}")

elseif(STEP STREQUAL "subdir")
  # Kept between runs so that a second ctest run rebuilds only what changed.
  build_consumer(add-subdirectory "${SOURCE_DIR}/tests/packaging/subdir"
                 "-DLUMOTYPES_SOURCE_DIR=${SOURCE_DIR}"
                 "-DLUMOTYPES_WERROR=${WERROR}")

else()
  message(FATAL_ERROR "unknown STEP '${STEP}'")
endif()

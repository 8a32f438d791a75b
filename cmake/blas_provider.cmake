# BLAS with CBLAS and LAPACK, as the interface target `blas_provider`: its libraries and the folder of its cblas.h.
# Libraries are named by their place, because what libblas.so and liblapack.so lead to is the machine's choice.
set(BAILUXSKO_BLAS openblas CACHE STRING "Provider of BLAS and LAPACK: openblas or reference")
set_property(CACHE BAILUXSKO_BLAS PROPERTY STRINGS openblas reference)

add_library(blas_provider INTERFACE)
if(BAILUXSKO_BLAS STREQUAL openblas)
    find_library(OPENBLAS_LIBRARY openblas REQUIRED)
    find_path(OPENBLAS_INCLUDE cblas.h PATH_SUFFIXES openblas-pthread openblas REQUIRED)
    target_link_libraries(blas_provider INTERFACE ${OPENBLAS_LIBRARY})
    target_include_directories(blas_provider SYSTEM INTERFACE ${OPENBLAS_INCLUDE})
elseif(BAILUXSKO_BLAS STREQUAL reference)
    find_library(REFERENCE_LAPACK lapack PATH_SUFFIXES lapack REQUIRED)
    find_library(REFERENCE_BLAS blas PATH_SUFFIXES blas REQUIRED)
    find_path(REFERENCE_INCLUDE cblas-netlib.h REQUIRED)
    # Both stand first among what a binary of ours needs, with their folders in its run path, so that
    # the loader takes them and not what the machine prefers under the same name.
    target_link_libraries(blas_provider INTERFACE ${REFERENCE_LAPACK} ${REFERENCE_BLAS})
    file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/blas_include/cblas.h CONTENT "#include <cblas-netlib.h>\n")
    target_include_directories(blas_provider SYSTEM INTERFACE
        ${CMAKE_BINARY_DIR}/blas_include ${REFERENCE_INCLUDE})
else()
    message(FATAL_ERROR "BAILUXSKO_BLAS is '${BAILUXSKO_BLAS}': choose openblas or reference")
endif()

# LAPACK's deprecated QR with column pivoting; where it is gone its successor stands in (src/bailuxsko/lapack/pivoting).
include(CheckCXXSourceCompiles)
get_target_property(CMAKE_REQUIRED_LIBRARIES blas_provider INTERFACE_LINK_LIBRARIES)
check_cxx_source_compiles("extern \"C\" void dgeqpf_(); extern \"C\" void zgeqpf_(); int main() { dgeqpf_(); zgeqpf_(); }"
    BAILUXSKO_HAS_GEQPF)
unset(CMAKE_REQUIRED_LIBRARIES)

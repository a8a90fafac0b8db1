# Warnings are errors for our own targets only; third-party headers come in as SYSTEM.
# -Wrestrict is left out: GCC 12 reports false overlaps inside std::string at -O3.
function(qz_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
endfunction()

# Clang before 17 leaves sized deallocation off; the kernel's pools return blocks through the
# sized global operator delete, so every compiler gets it.
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_compile_options(-fsized-deallocation)
endif()

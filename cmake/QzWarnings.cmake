# Warnings are errors for our own targets only; third-party headers come in as SYSTEM.
# -Wrestrict is left out: GCC 12 reports false overlaps inside std::string at -O3.
function(qz_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror
        $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
endfunction()

# Warnings are errors for our own targets only; third-party headers come in as SYSTEM.
function(qz_warnings target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
endfunction()

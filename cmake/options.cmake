# Compile options of our own targets; nothing here reaches a target that links us.
add_library(quillbrook_options INTERFACE)
target_compile_features(quillbrook_options INTERFACE cxx_std_20)
target_compile_options(quillbrook_options INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
if(QUILLBROOK_SANITIZE)
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(quillbrook_options INTERFACE ${sanitizers})
    target_link_options(quillbrook_options INTERFACE ${sanitizers})
endif()
if(QUILLBROOK_FUZZ)
    target_compile_options(quillbrook_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
# g++ 12 sees overlaps in std::string where there are none (GCC bug 105651).
target_compile_options(quillbrook_options INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)

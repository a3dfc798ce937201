# What compiler and linker add so that an error in memory ends the program instead of leading it.
# tests/app/hardening looks for all of it in the built program, SECURITY.md lists it.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)
include(CheckLinkerFlag)
include(CheckPIESupported)

# Without it CMake leaves to the compiler whether a program can lie anywhere in memory.
check_pie_supported(LANGUAGES CXX)

# plumara_harden(<target>)
# Everything that links <target> is protected by what its compiler and its linker know.
function(plumara_harden target)
    if(MSVC)
        target_compile_options(${target} INTERFACE /GS /guard:cf)
        target_link_options(${target} INTERFACE /DYNAMICBASE /NXCOMPAT /HIGHENTROPYVA /guard:cf)
        return()
    endif()

    set(compiling -fstack-protector-strong)
    if(WIN32)
        set(linking -Wl,--dynamicbase -Wl,--nxcompat -Wl,--high-entropy-va)
    else()
        # Windows has its own way of growing a stack, and of checking where a jump leads.
        list(APPEND compiling -fstack-clash-protection -fcf-protection)
        set(linking -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
    endif()
    foreach(flag IN LISTS compiling)
        string(MAKE_C_IDENTIFIER PLUMARA_COMPILES${flag} known)
        check_cxx_compiler_flag(${flag} ${known})
        if(${known})
            target_compile_options(${target} INTERFACE ${flag})
        endif()
    endforeach()
    foreach(flag IN LISTS linking)
        string(MAKE_C_IDENTIFIER PLUMARA_LINKS${flag} known)
        check_linker_flag(CXX ${flag} ${known})
        if(${known})
            target_link_options(${target} INTERFACE ${flag})
        endif()
    endforeach()

    # The library's checks of lengths want an optimised build, which that of the tests is not.
    foreach(level 3 2)
        set(CMAKE_REQUIRED_FLAGS "-O2 -Werror -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=${level}")
        check_cxx_source_compiles("
            #include <cstring>
            int main(int count, char **words)
            {
                char text[8];
                std::memcpy(text, words[0], count);
                return text[0];
            }" PLUMARA_FORTIFIES_${level})
        if(PLUMARA_FORTIFIES_${level})
            set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
            set(test $<IN_LIST:Qt6::Test,$<TARGET_PROPERTY:LINK_LIBRARIES>>)
            target_compile_options(${target} INTERFACE
                "$<$<AND:${optimised},$<NOT:${test}>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=${level}>")
            break()
        endif()
    endforeach()
endfunction()

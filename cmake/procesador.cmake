# The library is for 64-bit x86 alone: its records are laid out for it, and nobody has tried another processor. Asked of
# the compiler, for what CMake calls the processor is that of the machine, or nothing at all.
if(NOT LUMODIR_SOLO_TEXTO)
  include(CheckCSourceCompiles)
  check_c_source_compiles("
#if !(defined(_M_X64) || defined(__x86_64__)) || defined(_M_ARM64EC)
#error another processor
#endif
int main(void) { return 0; }
" LUMODIR_PARA_X64)
  if(NOT LUMODIR_PARA_X64)
    message(FATAL_ERROR "lumodir is a library for 64-bit x86 (x64); this compiler makes programs for another processor")
  endif()
endif()

# Pages of lumodir.hpp and its classes, beside those of the C headers, to which they link. What a function does is
# described in C; here a line says what it is called for, and parameters speak for themselves.
@INCLUDE               = docs/doxygen/Doxyfile
HTML_OUTPUT            = html/cpp
GENERATE_TAGFILE       =
TAGFILES               = build/docs/lumodir.tag=..
INPUT                  = include/lumodir.hpp include/cpp
FILE_PATTERNS          = *.hpp
FILTER_PATTERNS        = "*.hpp=perl docs/doxygen/cabecera.pl"
USE_MDFILE_AS_MAINPAGE =
OPTIMIZE_OUTPUT_FOR_C  = NO
TYPEDEF_HIDES_STRUCT   = NO
BUILTIN_STL_SUPPORT    = YES
EXTRACT_ALL            = YES
EXTRACT_STATIC         = YES
EXCLUDE_SYMBOLS        = *detalle* std
HIDE_FRIEND_COMPOUNDS  = YES
WARN_IF_UNDOCUMENTED   = NO
WARN_IF_INCOMPLETE_DOC = NO
WARN_NO_PARAMDOC       = NO
HTML_HEADER            = build/docs/cabeza_cpp.html
HTML_FOOTER            = build/docs/pie_cpp.html

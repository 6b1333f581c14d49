# Writes the header with the commit that is being built: empty without a repository, with a "+" when files were changed.
cmake_minimum_required(VERSION 3.25)
execute_process(COMMAND git describe --always --abbrev=10 --dirty=+ --exclude=*
    WORKING_DIRECTORY ${SOURCE} OUTPUT_VARIABLE commit ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
file(CONFIGURE OUTPUT ${HEADER} CONTENT "#define PROJECT_COMMIT \"@commit@\"\n" @ONLY)

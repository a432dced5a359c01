# Run by cpack on the files of the packages, whose place is known.
file(GLOB_RECURSE PARLO_PC ${CPACK_TEMPORARY_DIRECTORY}/parlo-api.pc)
file(READ ${PARLO_PC} PARLO_TEXT)
string(REGEX REPLACE "^prefix=[^\n]*" "prefix=${CPACK_PACKAGING_INSTALL_PREFIX}" PARLO_TEXT "${PARLO_TEXT}")
file(WRITE ${PARLO_PC} "${PARLO_TEXT}")

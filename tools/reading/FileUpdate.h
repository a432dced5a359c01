// Writing a file anew, whole or not at all.
#ifndef PARLO_FILEUPDATE_H
#define PARLO_FILEUPDATE_H

#include <string>

#include "reading/LineFile.h"

// Why the file of that name must not be written anew, half a sentence; empty when it may be, or when there is none.
std::string CannotUpdate(const std::string& strFile);

// Puts `strText` in the place of the file that was read, by way of a new file beside it with the same mode. A symbolic
// link stays one. Returns why that failed, half a sentence: also when the file has changed since it was opened.
std::string Update(const CLineFile& file, const std::string& strText);

#endif

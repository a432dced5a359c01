// A finding as a line for editors, as an excerpt for a person, as JSON for programs.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>

#include "findings/Finding.h"
#include "text/Text.h"

// "FILE:LINE:COLUMN: error: TEXT; SUGGESTION (POINTER) [code]" with its line break; the pointer where the line says
// little.
std::string FindingLine(const std::string& strFile, const Finding& stFinding, const CPaint& paint);

// The line of `szText` where the finding stands, or the part of it around the place, and a marker below.
std::string FindingExcerpt(std::string_view szText, const Finding& stFinding, const CPaint& paint);

// A line that GitHub makes an annotation of.
std::string FindingGithub(const std::string& strFile, const Finding& stFinding);

// Its members in JSON, without the file.
Json::Value FindingMembers(const Finding& stFinding);

// One object on one line, in ASCII.
std::string FindingJson(const std::string& strFile, const Finding& stFinding);

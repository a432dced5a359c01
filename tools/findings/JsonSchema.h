// The description of the server's documents as JSON Schema, for editors and validators.
#pragma once

#include <string>

// Of a "reply", a "search" schema document or a line of a "conversation": a document of the draft 2020-12, over several
// lines.
std::string JsonSchemaOf(const std::string& strDocument);

// The description of the server's documents as JSON Schema, for editors and validators.
#ifndef PARLO_JSONSCHEMA_H
#define PARLO_JSONSCHEMA_H

#include <string>

#include "findings/Description.h"

// A document of the draft 2020-12, over several lines.
std::string JsonSchemaOf(const Description::Object& stObject);

#endif

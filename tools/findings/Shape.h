// A document against its description: unknown and repeated keys, wrong types, unknown words.
#pragma once

#include "findings/Description.h"
#include "findings/Report.h"

// Reports what of `document`, which is an object, is not as `stObject` says.
void CheckShape(const Node& document, const Description::Object& stObject, CReport& report);

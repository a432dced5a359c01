// The action record as a person reads it.
#pragma once

#include <string>

#include "CADataRepository.h"
#include "reading/Input.h"
#include "text/Text.h"

// The line that stands above what is told of a reply.
std::string Heading(const ServerReply& stReply, const CPaint& paint);

// Every field that the library filled, a line or a table each; a field that it left alone is not shown.
std::string RenderRecord(const ServerReply& stReply, const CADataRepository::_ConvActionInfo& info,
                         const CPaint& paint);

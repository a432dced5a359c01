// What is wrong with a document of the server, found without the service.
#ifndef PARLO_FINDINGS_CHECK_H
#define PARLO_FINDINGS_CHECK_H

#include <string_view>
#include <vector>

#include "findings/Finding.h"

// All findings of a reply, in the order of the text. A correct reply has none.
std::vector<Finding> CheckReply(std::string_view szReply);

// The same for a search schema document.
std::vector<Finding> CheckSchema(std::string_view szDocument);

#endif

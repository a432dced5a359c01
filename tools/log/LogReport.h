// The calls of a log as a person or a program reads them.
#ifndef PARLO_LOGREPORT_H
#define PARLO_LOGREPORT_H

#include <json/value.h>

#include <optional>
#include <string>

#include "log/LineCompare.h"
#include "log/LogCalls.h"
#include "rendering/Text.h"

// What there is to tell of a call beside the call itself.
struct CallReport {
    std::optional<int> nStatus;  // of a status call
    std::string strFile;         // where its reply was written
    std::optional<Comparison> stReplayed;
    std::string strExplanation;  // lines, each with its break
};

// A line with the columns of the list, and indented lines for what the list has no columns for.
std::string RenderCall(const LogCall& call, const CallReport& stReport, const CPaint& paint);

// The heading of those columns.
std::string RenderCallHeading(const CPaint& paint);

Json::Value CallJson(const LogCall& call, const CallReport& stReport);

// "log.txt:12"
std::string PlaceOf(const LogCall& call);

#endif

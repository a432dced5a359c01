// What the commands of a reply and their parameters come to.
#pragma once

#include "findings/Report.h"

// The action of a command that counts: the last one that it or its "params" give. When nothing does it is the
// command's own, which is null. What is doubtful about it is doubtful about the command's own too.
Node ActionIn(const Node& command, const CReport& report);

// Reports on "tvcontrol", a list of at least one. Says whether the first command shows contents; when its action is
// not known that is not known either, and the action is doubted.
bool CheckCommands(const Node& commands, bool bFailedSearch, CReport& report);

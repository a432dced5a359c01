// What the content items of a reply come to.
#pragma once

#include "findings/Report.h"

// Reports on the elements of "tvcontent" of a reply whose command shows them.
void CheckItems(const Node& contents, CReport& report);

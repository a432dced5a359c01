// Which image size code the server's poster template is filled with, by the kind of content.
#pragma once

#include <map>
#include <string>

#include "CASingleton.h"

// Held by CCASingleton<CCAImageSizeTable>, made by the first poster and kept until the process ends.
// Read-only once it is made.
class __attribute__((visibility("default"))) CCAImageSizeTable
{
public:
    CCAImageSizeTable();
    ~CCAImageSizeTable() = default;

    // Looks up the size code of the content kind `strMode` ("movie") for a full-HD set. False, with `size`
    // untouched, when the kind is not listed; "apps" is not, although "app" is.
    bool GetSize(const std::string& strMode, int& size) const;

    // Adds a row, or overwrites it. An empty text or a size of 0 or less adds nothing.
    void t_AddItem(const std::string& strMode, const std::string& strKey, int nSize);

private:
    std::map<std::string, int> m_mapSize;  // by screen mode, separator and kind: "1080;movie"
    std::string m_strSeparator = ";";
};

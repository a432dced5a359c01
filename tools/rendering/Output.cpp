// Writing, with every failure told.
#include "rendering/Output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "Printable.h"

void Print(const std::string& strText)
{
    if (std::fwrite(strText.data(), 1, strText.size(), stdout) != strText.size())
        throw std::system_error(errno, std::generic_category());
}

void FlushOutput()
{
    if (std::fflush(stdout) != 0) throw std::system_error(errno, std::generic_category());
}

void Complain(const std::string& strText)
{
    const std::string strLine = "parlo: " + Host::Printable(strText) + ".\n";
    static_cast<void>(std::fwrite(strLine.data(), 1, strLine.size(), stderr));
}

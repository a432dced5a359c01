// Writing, with every failure told.
#include "text/Output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "Printable.h"
#include "text/Progress.h"

namespace
{

bool g_bFailed = false;
int g_nWriteError = 0;  // of standard output; it stays, whoever noticed it first

void NoteWriteError()
{
    if (g_nWriteError == 0) g_nWriteError = errno;
}

void ThrowWriteError()
{
    if (g_nWriteError != 0 && g_nWriteError != EPIPE) throw std::system_error(g_nWriteError, std::generic_category());
}

}  // namespace

void Print(const std::string& strText)
{
    if (g_nWriteError == EPIPE) return;
    if (std::fwrite(strText.data(), 1, strText.size(), stdout) != strText.size()) NoteWriteError();
    ThrowWriteError();
}

void FlushOutput()
{
    if (g_nWriteError == 0 && std::fflush(stdout) != 0) NoteWriteError();
    ThrowWriteError();
}

void StopWithoutReader()
{
    if (g_nWriteError == EPIPE) throw std::system_error(g_nWriteError, std::generic_category());
}

void Complain(const std::string& strText)
{
    ClearProgress();
    if (g_nWriteError == 0 && std::fflush(stdout) != 0) NoteWriteError();  // told by the next one who writes
    const bool bQuestion = !strText.empty() && strText.back() == '?';
    const std::string strLine = "parlo: " + Host::Printable(strText) + (bQuestion ? "\n" : ".\n");
    static_cast<void>(std::fwrite(strLine.data(), 1, strLine.size(), stderr));
}

void Fail(const std::string& strText)
{
    NoteFailure();
    Complain(strText);
}

void NoteFailure()
{
    g_bFailed = true;
}

bool HasFailed()
{
    return g_bFailed;
}

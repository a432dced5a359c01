// parlo: what a television makes of a voice server's reply, on the command line.
#include <clocale>

#include "commands/Command.h"

int main(int argc, char** argv)
{
    static_cast<void>(std::setlocale(LC_CTYPE, "C.UTF-8"));  // for the width of characters in tables
    CCommandLine line;
    AddReply(line);
    AddConversation(line);
    AddExplain(line);
    AddLog(line);
    AddTest(line);
    AddDiff(line);
    AddStatus(line);
    AddActions(line);
    AddCheck(line);
    AddSchema(line);
    return line.Main(argc, argv);
}

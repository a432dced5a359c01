// parlo: what a television makes of a voice server's reply, on the command line.
#include <clocale>

#include "commands/Command.h"

int main(int argc, char** argv)
{
    static_cast<void>(std::setlocale(LC_CTYPE, "C.UTF-8"));  // for the width of characters in tables
    CCommandLine line;
    for (const auto add :
         {AddReply, AddConversation, AddExplain, AddLog, AddTest, AddDiff, AddStatus, AddActions, AddCheck, AddSchema})
        add(line);
    return line.Main(argc, argv);
}

// What the commands share: how one declares itself and its options, and how the program ends.
//
// A command is a unit of this folder with a function that adds it, which main.cpp calls:
//
//   void AddStatus(CCommandLine& line)
//   {
//       const auto pAll = std::make_shared<bool>(false);
//       CCommand command = line.Add("status", "Tell whether ...", "  parlo status --all",
//                                   [pAll](const Options& stOptions) { return RunStatus(stOptions, *pAll); });
//       command.Flag("--all", *pAll, "Show the answer for every country and voice language");
//   }
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "text/Text.h"

namespace CLI
{
class App;
}

constexpr int kExitOk = 0;
constexpr int kExitFailure = 1;      // a file or reply failed; a mistake, a difference was found
constexpr int kExitUsage = 2;        // the command line or the environment was wrong
constexpr int kExitUnreadable = 2;   // where kExitFailure tells what was found: it could not look everywhere
constexpr int kExitUnavailable = 3;  // "status": the set does not offer conversation

// The options that several commands have. A command declares those that it takes.
struct Options {
    std::vector<std::string> vFiles;
    std::string strUtterance;  // empty: not given
    bool bJson = false;
    bool bCompact = false;
    std::string strColour = "auto";

    // Colours for standard output, as --color, NO_COLOR and the terminal (TERM) want it.
    CPaint Paint() const;
};

// A command while it is declared. Fields that options fill must live as long as the command line.
class CCommand
{
public:
    CCommand(CLI::App& app, Options& stOptions) : m_app(app), m_stOptions(stOptions) {}

    void Files(const char* szHelp);
    void Replies(const char* szHelp);  // files too, or folders: every .json and .jsonl below them
    void NoSet();                      // the options of the set would change nothing
    void Utterance(bool bRequired);
    void Json(const char* szHelp);
    void Compact();  // behind Json

    void Flag(const char* szName, bool& bField, const char* szHelp);
    // A value that may be left out: of the option, or of the argument if the name has no dashes. Any text, or one of
    // the words.
    void Text(const char* szName, std::string& strField, const char* szHelp,
              const std::vector<std::string>& vWords = {});
    // Values that are given again and again, or with commas; `wrong` says what is wrong with one, empty if nothing is.
    void Texts(const char* szName, std::vector<std::string>& vField, const char* szHelp,
               std::string (*wrong)(const std::string& strValue) = nullptr);

private:
    CLI::App& m_app;
    Options& m_stOptions;
};

// The whole command line. Main parses it, runs the command that was chosen and gives the exit status.
class CCommandLine
{
public:
    using Run = std::function<int(const Options&)>;

    CCommandLine();
    ~CCommandLine();
    CCommandLine(const CCommandLine&) = delete;
    CCommandLine& operator=(const CCommandLine&) = delete;

    CCommand Add(const char* szName, const char* szHelp, const char* szExamples, Run run);
    int Main(int argc, char** argv);

private:
    int RunChosen(int argc, char** argv);

    std::unique_ptr<CLI::App> m_pApp;
    Options m_stOptions;
    std::vector<std::pair<CLI::App*, Run>> m_vCommands;
};

// The commands. One that another unit brings has its line here and its call in main.cpp.
void AddReply(CCommandLine& line);
void AddConversation(CCommandLine& line);
void AddExplain(CCommandLine& line);
void AddLog(CCommandLine& line);
void AddTest(CCommandLine& line);
void AddDiff(CCommandLine& line);
void AddStatus(CCommandLine& line);
void AddActions(CCommandLine& line);
void AddCheck(CCommandLine& line);
void AddSchema(CCommandLine& line);

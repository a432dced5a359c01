// parlo: what a television makes of a voice server's reply, on the command line.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <functional>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

#include "commands/Catalog.h"
#include "commands/Explain.h"
#include "rendering/RecordJson.h"
#include "rendering/Render.h"
#include "session/Session.h"

namespace
{

constexpr int kExitOk = 0;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

struct Options {
    std::string strUtterance = "(utterance)";
    std::vector<std::string> vFiles;
    bool bJson = false;
    bool bAll = false;
};

// An option that sets the substitute of the television's functions, through its environment variable.
struct SetOption {
    const char* szFlag;
    const char* szVariable;
    const char* szHelp;
    std::vector<std::string> vValues;  // empty: any text
};

const SetOption kSetOptions[] = {
    {"--country", "PARLO_COUNTRY", "the set's country code, or none (US)", {}},
    {"--language", "PARLO_LANGUAGE", "the voice language, or none (en_US)", {}},
    {"--voice-recog", "PARLO_VOICE_RECOG", "whether the set recognises voice (1)", {"0", "1", "none"}},
    {"--log", "PARLO_LOG", "what of the library's log goes to standard error (off)", {"off", "error", "debug"}},
};

CPaint StandardOutputPaint()
{
    const char* szNoColour = std::getenv("NO_COLOR");
    return CPaint((szNoColour == nullptr || *szNoColour == '\0') && isatty(STDOUT_FILENO) != 0);
}

CSession::Show ShowRecord(const Options& stOptions)
{
    return
        [bJson = stOptions.bJson, paint = StandardOutputPaint()](const ServerReply& stReply, const Outcome& stOutcome) {
            if (!stOutcome.bAccepted) return;
            if (bJson)
                WriteJsonLine(stOutcome.info, Print);
            else
                Print(RenderRecord(stReply, stOutcome.info, paint));
        };
}

int RunReplies(const Options& stOptions, CSession::Show show, bool bKeepLog)
{
    CSession session(std::move(show), bKeepLog);
    for (const std::string& strFile : stOptions.vFiles) session.RunReplyFile(strFile, stOptions.strUtterance);
    return session.HasFailed() ? kExitFailure : kExitOk;
}

int RunReply(const Options& stOptions)
{
    return RunReplies(stOptions, ShowRecord(stOptions), false);
}

int RunExplain(const Options& stOptions)
{
    const auto Show = [paint = StandardOutputPaint()](const ServerReply& stReply, const Outcome& stOutcome) {
        Print(Explain(stReply, stOutcome, paint));
    };
    return RunReplies(stOptions, Show, true);
}

int RunConversation(const Options& stOptions)
{
    CSession session(ShowRecord(stOptions), false);
    for (const std::string& strFile : stOptions.vFiles) session.RunConversationFile(strFile);
    return session.HasFailed() ? kExitFailure : kExitOk;
}

int RunStatus(const Options& stOptions)
{
    const CSession session({}, false);
    Print(stOptions.bAll ? RenderAllStatuses(StandardOutputPaint()) : RenderStatus());
    return kExitOk;
}

int RunActions(const Options& stOptions)
{
    Print(stOptions.bJson ? VocabularyJson() : RenderVocabulary(StandardOutputPaint()));
    return kExitOk;
}

// The arguments in the parser's order, the last one first. "--option=" is taken apart, as the parser would take
// the next argument for its value.
std::vector<std::string> Arguments(int argc, char** argv)
{
    std::vector<std::string> vArguments;
    for (int i = argc - 1; i > 0; --i) {
        std::string strArgument = argv[i];
        const bool bEmptyValue = strArgument.rfind("--", 0) == 0 && strArgument.find('=') == strArgument.size() - 1;
        if (bEmptyValue) {
            vArguments.emplace_back();
            strArgument.pop_back();
        }
        vArguments.push_back(std::move(strArgument));
    }
    return vArguments;
}

// The command line: what there is, and what was chosen.
class CCommandLine
{
public:
    CCommandLine();
    int Run(int argc, char** argv);

private:
    void AddSetOptions();
    void AddReplyCommands();
    void AddOtherCommands();

    using Command = std::function<int(const Options&)>;
    CLI::App* Add(const char* szName, const char* szHelp, Command command, const char* szExamples);
    void AddFiles(CLI::App* pCommand, const char* szHelp);
    CLI::Option* AddUtterance(CLI::App* pCommand);

    CLI::App m_app{"Shows what a television makes of a voice server's reply.", "parlo"};
    Options m_stOptions;
    std::vector<std::pair<CLI::App*, Command>> m_vCommands;
};

CCommandLine::CCommandLine()
{
    m_app.set_version_flag("--version", "parlo " PARLO_VERSION, "Print the version and exit");
    m_app.failure_message([](const CLI::App*, const CLI::Error& e) { return std::string(e.what()); });
    m_app.footer(
        "Exit status: 0 all went well, 1 a file or reply failed, 2 wrong usage.\n\nExamples:\n"
        "  parlo reply --utterance \"turn it up\" volume.json\n"
        "  parlo conversation evening.jsonl\n"
        "  parlo --country DE --language de_DE status");
    AddSetOptions();
    AddReplyCommands();
    AddOtherCommands();
}

void CCommandLine::AddSetOptions()
{
    for (const SetOption& stOption : kSetOptions) {
        const auto SetVariable = [szVariable = stOption.szVariable](const std::string& strValue) {
            setenv(szVariable, strValue.c_str(), 1);
        };
        CLI::Option* pOption = m_app.add_option_function<std::string>(stOption.szFlag, SetVariable, stOption.szHelp);
        pOption->group("The set")->type_name("TEXT");
        if (!stOption.vValues.empty()) pOption->check(CLI::IsMember(stOption.vValues));
    }
}

void CCommandLine::AddReplyCommands()
{
    constexpr const char* kReplyHelp = "a reply of the server; - for standard input";
    constexpr const char* kJsonHelp = "Print one JSON object a reply, with every field";

    CLI::App* pReply = Add("reply", "Print the action record of each reply", RunReply,
                           "  parlo reply --utterance \"turn it up\" volume.json\n"
                           "  parlo reply --utterance \"turn it up\" --json - < volume.json");
    AddUtterance(pReply)->required();
    AddFiles(pReply, kReplyHelp);
    pReply->add_flag("--json", m_stOptions.bJson, kJsonHelp);

    CLI::App* pConversation = Add("conversation", "Print the action record of each turn of a conversation",
                                  RunConversation, "  parlo conversation evening.jsonl");
    AddFiles(pConversation, "JSON Lines, each {\"utterance\": TEXT, \"reply\": OBJECT or TEXT}; - for standard input");
    pConversation->add_flag("--json", m_stOptions.bJson, kJsonHelp);

    CLI::App* pExplain =
        Add("explain", "Tell what became of each part of a reply, and why", RunExplain, "  parlo explain search.json");
    AddUtterance(pExplain);
    AddFiles(pExplain, kReplyHelp);
}

void CCommandLine::AddOtherCommands()
{
    CLI::App* pStatus = Add("status", "Tell whether conversation is available on the set", RunStatus,
                            "  parlo --country DE --language de_DE status\n  parlo status --all");
    pStatus->add_flag("--all", m_stOptions.bAll, "Show the answer for every country and voice language");

    CLI::App* pActions = Add("actions", "List the server's words and their codes", RunActions,
                             "  parlo actions\n  parlo actions --json");
    pActions->add_flag("--json", m_stOptions.bJson, "Print one JSON object");
}

CLI::App* CCommandLine::Add(const char* szName, const char* szHelp, Command command, const char* szExamples)
{
    CLI::App* pCommand = m_app.add_subcommand(szName, szHelp);
    pCommand->fallthrough();
    pCommand->footer(std::string("Options of the set: see parlo --help.\n\nExamples:\n") + szExamples);
    m_vCommands.emplace_back(pCommand, std::move(command));
    return pCommand;
}

void CCommandLine::AddFiles(CLI::App* pCommand, const char* szHelp)
{
    pCommand->add_option("FILE", m_stOptions.vFiles, szHelp)->required()->type_name("");
}

CLI::Option* CCommandLine::AddUtterance(CLI::App* pCommand)
{
    const auto NotEmpty = [](const std::string& strText) {
        return strText.empty() ? "the utterance is empty" : std::string();
    };
    return pCommand->add_option("--utterance", m_stOptions.strUtterance, "what the viewer said")->check(NotEmpty);
}

int CCommandLine::Run(int argc, char** argv)
{
    try {
        m_app.parse(Arguments(argc, argv));
    } catch (const CLI::ParseError& e) {
        std::ostringstream output;
        std::ostringstream error;
        if (m_app.exit(e, output, error) == kExitOk) {
            Print(output.str());
            return kExitOk;
        }
        Complain(error.str() + "; see parlo --help");
        return kExitUsage;
    }
    for (const auto& [pCommand, command] : m_vCommands)
        if (pCommand->parsed()) return command(m_stOptions);
    Complain("a command is required; see parlo --help");
    return kExitUsage;
}

}  // namespace

int main(int argc, char** argv)
{
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));        // a closed pipe is an error of the write, like a full disk
    static_cast<void>(std::setlocale(LC_CTYPE, "C.UTF-8"));  // for the width of characters in tables
    try {
        const int nExit = CCommandLine().Run(argc, argv);
        FlushOutput();
        return nExit;
    } catch (const std::system_error& e) {
        Complain("the output cannot be written: " + e.code().message());
    } catch (const std::exception& e) {
        Complain(e.what());
    }
    return kExitFailure;
}

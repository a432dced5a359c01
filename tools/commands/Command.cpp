// The command line on CLI11, which this unit alone knows.
#include "commands/Command.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <sstream>
#include <system_error>
#include <utility>

#include "findings/Suggestion.h"
#include "text/Output.h"

namespace
{

// An option that sets the substitute of the television's functions, through its environment variable.
struct SetOption {
    const char* szFlag;
    const char* szVariable;
    const char* szHelp;
    const char* szExample;  // any value of its form will do; empty: none but the values
    std::vector<std::string> vValues;
};

const SetOption kSetOptions[] = {
    {"--country", "PARLO_COUNTRY", "the set's country code, or none (US)", "US", {"none", ""}},
    {"--language", "PARLO_LANGUAGE", "the voice language, or none (en_US)", "en_US", {"none", ""}},
    {"--voice-recog", "PARLO_VOICE_RECOG", "whether the set recognises voice (1)", "", {"0", "1", "none"}},
    {"--log", "PARLO_LOG", "what of the library's log goes to standard error (off)", "", {"off", "error", "debug"}},
};

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

// "did you mean "--json"?", with what stands before it; nothing when nothing is like it.
std::string Suggestion(const std::string& strWord, const std::vector<std::string>& vKnown)
{
    const std::vector<std::string_view> vWords(vKnown.begin(), vKnown.end());
    const std::string strSuggestion = DidYouMean(MostAlike(strWord, vWords));
    return strSuggestion.empty() ? std::string() : ", " + strSuggestion;
}

// The long names of the options that may be given to the command; null: to none.
std::vector<std::string> OptionNames(const CLI::App& app, const CLI::App* pCommand)
{
    std::vector<std::string> vNames;
    for (const CLI::App* pApp : {&app, pCommand}) {
        if (pApp == nullptr) continue;
        for (const CLI::Option* pOption : pApp->get_options())
            for (const std::string& strName : pOption->get_lnames()) vNames.push_back("--" + strName);
    }
    return vNames;
}

// What is wrong with the first argument that nobody took; empty when all were taken. It comes first: what else is
// wrong may follow from it.
std::string WrongArgument(const CLI::App& app)
{
    const std::vector<std::string> vLeft = app.remaining(true);
    if (vLeft.empty()) return {};
    const std::vector<CLI::App*> vChosen = app.get_subcommands();
    const CLI::App* pCommand = vChosen.empty() ? nullptr : vChosen.front();
    for (const std::string& strLeft : vLeft) {
        if (strLeft.size() < 2 || strLeft.front() != '-') continue;
        const std::string strName = strLeft.substr(0, strLeft.find('='));
        return "unknown option " + Quoted(strName) + Suggestion(strName, OptionNames(app, pCommand));
    }
    if (pCommand != nullptr) return Quoted(vLeft.front()) + " is one argument too many";
    std::vector<std::string> vNames;
    for (const CLI::App* pEach : app.get_subcommands(nullptr)) vNames.push_back(pEach->get_name());
    return "unknown command " + Quoted(vLeft.front()) + Suggestion(vLeft.front(), vNames);
}

// Whether each character is of the same kind as in the example: a capital, a small letter, or that character itself.
bool IsLike(std::string_view szValue, std::string_view szExample)
{
    const auto Kind = [](char c) { return c >= 'A' && c <= 'Z' ? 'A' : c >= 'a' && c <= 'z' ? 'a' : c; };
    const auto Same = [&](char cOne, char cOther) { return Kind(cOne) == Kind(cOther); };
    return std::equal(szValue.begin(), szValue.end(), szExample.begin(), szExample.end(), Same);
}

// What is wrong with a value of the set; empty when nothing is.
std::string WrongValue(const SetOption& stOption, const std::string& strValue)
{
    const auto& vValues = stOption.vValues;
    const bool bForm = *stOption.szExample != '\0';
    if (std::find(vValues.begin(), vValues.end(), strValue) != vValues.end()) return {};
    if (bForm && IsLike(strValue, stOption.szExample)) return {};
    return Quoted(strValue) +
           (bForm ? std::string(" is neither a code like ") + stOption.szExample + " nor " + vValues.front()
                  : " is not one of " + Joined(vValues));
}

std::string WrongVariable()
{
    for (const SetOption& stOption : kSetOptions) {
        const char* szValue = std::getenv(stOption.szVariable);
        const std::string strWrong = szValue == nullptr ? std::string() : WrongValue(stOption, szValue);
        if (!strWrong.empty()) return std::string(stOption.szVariable) + ": " + strWrong;
    }
    return {};
}

}  // namespace

CPaint Options::Paint() const
{
    const char* szNoColour = std::getenv("NO_COLOR");
    const char* szTerminal = std::getenv("TERM");
    const bool bRefused = (szNoColour != nullptr && *szNoColour != '\0') ||
                          (szTerminal != nullptr && std::string_view(szTerminal) == "dumb");
    const bool bWanted = !bRefused && isatty(STDOUT_FILENO) != 0;
    return CPaint(strColour == "always" || (strColour == "auto" && bWanted));
}

void CCommand::Files(const char* szHelp)
{
    m_app.add_option("FILE", m_stOptions.vFiles, szHelp)->required()->type_name("");
}

void CCommand::Utterance(bool bRequired)
{
    const auto NotEmpty = [](const std::string& strText) {
        return strText.empty() ? "the utterance is empty" : std::string();
    };
    m_app.add_option("--utterance", m_stOptions.strUtterance, "what the viewer said")
        ->check(NotEmpty)
        ->required(bRequired);
}

void CCommand::Json(const char* szHelp)
{
    Flag("--json", m_stOptions.bJson, szHelp);
}

void CCommand::Compact()
{
    m_app.add_flag("--compact", m_stOptions.bCompact, "With --json: leave out the fields that are not filled")
        ->needs(m_app.get_option("--json"));
}

void CCommand::Flag(const char* szName, bool& bField, const char* szHelp)
{
    m_app.add_flag(szName, bField, szHelp)->disable_flag_override();
}

void CCommand::Text(const char* szName, std::string& strField, const char* szHelp)
{
    m_app.add_option(szName, strField, szHelp)->type_name("TEXT");
}

void CCommand::Choice(const char* szName, std::string& strField, const char* szHelp,
                      const std::vector<std::string>& vWords)
{
    m_app.add_option(szName, strField, szHelp)->check(CLI::IsMember(vWords))->type_name("TEXT");
}

void CCommand::Positional(const char* szName, std::string& strField, const char* szHelp)
{
    m_app.add_option(szName, strField, szHelp)->type_name("");
}

CCommandLine::CCommandLine()
    : m_pApp(std::make_unique<CLI::App>("Shows what a television makes of a voice server's reply.", "parlo"))
{
    m_pApp->set_version_flag("--version", "parlo " PARLO_VERSION, "Print the version and exit");
    m_pApp->failure_message([](const CLI::App*, const CLI::Error& e) { return std::string(e.what()); });
    m_pApp->footer(
        "Exit status: 0 all went well, 1 a file or reply failed, 2 wrong usage, or nothing to compare (diff), 3 "
        "conversation is not available "
        "(status).\n\nExamples:\n"
        "  parlo reply --utterance \"turn it up\" volume.json\n"
        "  parlo conversation evening.jsonl\n"
        "  parlo --country DE --language de_DE status");
    m_pApp->add_option("--color", m_stOptions.strColour, "whether to colour what is printed: auto, always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->type_name("TEXT");
    AddSetOptions();
}

CCommandLine::~CCommandLine() = default;

void CCommandLine::AddSetOptions()
{
    for (const SetOption& stOption : kSetOptions) {
        const auto SetVariable = [szVariable = stOption.szVariable](const std::string& strValue) {
            setenv(szVariable, strValue.c_str(), 1);
        };
        CLI::Option* pOption = m_pApp->add_option_function<std::string>(stOption.szFlag, SetVariable, stOption.szHelp);
        pOption->group("The set")->type_name("TEXT");
        pOption->check([&stOption](const std::string& strValue) { return WrongValue(stOption, strValue); });
    }
}

CCommand CCommandLine::Add(const char* szName, const char* szHelp, const char* szExamples, Run run)
{
    CLI::App* pCommand = m_pApp->add_subcommand(szName, szHelp);
    pCommand->fallthrough();
    pCommand->footer(std::string("Options of the set: see parlo --help.\n\nExamples:\n") + szExamples);
    m_vCommands.emplace_back(pCommand, std::move(run));
    return {*pCommand, m_stOptions};
}

int CCommandLine::RunChosen(int argc, char** argv)
{
    try {
        m_pApp->parse(Arguments(argc, argv));
    } catch (const CLI::ParseError& e) {
        std::ostringstream output;
        std::ostringstream error;
        if (m_pApp->exit(e, output, error) == kExitOk) {
            Print(output.str());
            return kExitOk;
        }
        const std::string strWrong = WrongArgument(*m_pApp);
        Complain((strWrong.empty() ? error.str() : strWrong) + "; see parlo --help");
        return kExitUsage;
    }
    if (const std::string strWrong = WrongVariable(); !strWrong.empty()) {
        Complain(strWrong);
        return kExitUsage;
    }
    for (const auto& [pCommand, run] : m_vCommands)
        if (pCommand->parsed()) return run(m_stOptions);
    Complain("a command is required; see parlo --help");
    return kExitUsage;
}

int CCommandLine::Main(int argc, char** argv)
{
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));  // Output.h tells what a closed pipe is
    try {
        const int nExit = RunChosen(argc, argv);
        FlushOutput();
        return nExit;
    } catch (const std::system_error& e) {
        // A command that only prints has ended with its reader; what had failed until then still counts.
        if (e.code() == std::errc::broken_pipe) return HasFailed() ? kExitFailure : kExitOk;
        Complain("the output cannot be written: " + e.code().message());
    } catch (const std::exception& e) {
        Complain(e.what());
    }
    return kExitFailure;
}

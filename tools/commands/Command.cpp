// The command line on CLI11, which this unit alone knows.
#include "commands/Command.h"

#include <fnmatch.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <sstream>
#include <system_error>
#include <utility>

#include "findings/Suggestion.h"
#include "reading/Files.h"
#include "session/LogTap.h"
#include "text/Output.h"

namespace
{

// An option that sets the substitute of the television's functions, through its environment variable.
struct SetOption {
    const char* szFlag;
    const char* szVariable;
    const char* szHelp;
    const char* szPattern;  // of the shell, for the values that it may have
    const char* szOther;    // what any other value is
};

constexpr SetOption kSetOptions[] = {
    {"--country", "PARLO_COUNTRY", "the set's country code, or none (US)", "@([A-Z][A-Z]|none|)",
     " is neither a code like US nor none"},
    {"--language", "PARLO_LANGUAGE", "the voice language, or none (en_US)", "@([a-z][a-z]_[A-Z][A-Z]|none|)",
     " is neither a code like en_US nor none"},
    {"--voice-recog", "PARLO_VOICE_RECOG", "whether the set recognises voice (1)", "@(0|1|none)",
     " is not one of 0, 1, none"},
    {"--log", "PARLO_LOG", "what of the library's log goes to standard error (off)", "@(off|error|debug)",
     " is not one of off, error, debug"},
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

// What is wrong with the first argument that nobody took; empty when all were taken. It comes first: what else is
// wrong may follow from it.
std::string WrongArgument(const CLI::App& app)
{
    const std::vector<std::string> vLeft = app.remaining(true);
    if (vLeft.empty()) return {};
    std::vector<const CLI::App*> vApps = {&app};
    for (const CLI::App* pCommand : app.get_subcommands()) vApps.push_back(pCommand);
    std::vector<std::string> vNames;
    for (const CLI::App* pApp : vApps)
        for (const CLI::Option* pOption : pApp->get_options())
            for (const std::string& strName : pOption->get_lnames()) vNames.push_back("--" + strName);
    for (const std::string& strLeft : vLeft) {
        if (strLeft.size() < 2 || strLeft.front() != '-') continue;
        const std::string strName = strLeft.substr(0, strLeft.find('='));
        return "unknown option " + Quoted(strName) +
               DidYouMean(MostAlike(strName, {vNames.begin(), vNames.end()}), ", ");
    }
    if (vApps.size() > 1) return Quoted(vLeft.front()) + " is one argument too many";
    vNames.clear();
    for (const CLI::App* pEach : app.get_subcommands(nullptr)) vNames.push_back(pEach->get_name());
    return "unknown command " + Quoted(vLeft.front()) +
           DidYouMean(MostAlike(vLeft.front(), {vNames.begin(), vNames.end()}), ", ");
}

// What is wrong with a value of the set; empty when nothing is.
std::string WrongValue(const SetOption& stOption, const std::string& strValue)
{
    const bool bFits = fnmatch(stOption.szPattern, strValue.c_str(), FNM_EXTMATCH) == 0;
    // The program itself looks at the last one.
    if (&stOption != std::end(kSetOptions) - 1 && !SubstituteAnswers()) return "this set answers by itself";
    return bFits ? std::string() : Quoted(strValue) + stOption.szOther;
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

void CCommand::Replies(const char* szHelp)
{
    Files(szHelp);
    const auto WithFolders = [&stOptions = m_stOptions] {
        for (const std::string& strFile : std::exchange(stOptions.vFiles, {})) {
            const std::vector<std::string> vBelow = FilesOf(strFile);
            if (vBelow.empty()) throw CLI::ValidationError("FILE", Quoted(strFile) + " holds no .json and no .jsonl");
            stOptions.vFiles.insert(stOptions.vFiles.end(), vBelow.begin(), vBelow.end());
        }
    };
    m_app.callback(WithFolders);
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

void CCommand::NoSet()
{
    for (const SetOption& stOption : kSetOptions) m_app.excludes(m_app.get_parent()->get_option(stOption.szFlag));
    m_app.footer(m_app.get_footer().substr(m_app.get_footer().find("Examples:")));
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

void CCommand::Text(const char* szName, std::string& strField, const char* szHelp,
                    const std::vector<std::string>& vWords)
{
    CLI::Option* pOption = m_app.add_option(szName, strField, szHelp)->type_name(*szName == '-' ? "TEXT" : "");
    if (!vWords.empty()) pOption->check(CLI::IsMember(vWords));
}

void CCommand::Texts(const char* szName, std::vector<std::string>& vField, const char* szHelp,
                     std::string (*wrong)(const std::string& strValue))
{
    CLI::Option* pOption = m_app.add_option(szName, vField, szHelp)->delimiter(',')->allow_extra_args(false);
    pOption->type_name("TEXT,...");
    if (wrong != nullptr) pOption->check(wrong);
}

CCommandLine::CCommandLine()
    : m_pApp(std::make_unique<CLI::App>("Shows what a television makes of a voice server's reply.", "parlo"))
{
    m_pApp->set_version_flag("--version", "parlo " PARLO_VERSION, "Print the version and exit");
    m_pApp->require_subcommand(0, 1);  // behind a command, the name of another one is an argument as any
    m_pApp->failure_message([](const CLI::App*, const CLI::Error& e) { return std::string(e.what()); });
    m_pApp->footer(
        "Exit status: 0 all went well, 1 a file or reply failed, 2 wrong usage, or a file that cannot be read (check, "
        "test, diff), 3 conversation is not available (status).\n\nExamples:\n"
        "  parlo reply --utterance \"turn it up\" volume.json\n"
        "  parlo conversation evening.jsonl\n"
        "  parlo --country DE --language de_DE status");
    m_pApp->add_option("--color", m_stOptions.strColour, "whether to colour what is printed: auto, always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->type_name("TEXT");
    for (const SetOption& stOption : kSetOptions) {
        const auto Set = [&stOption](const std::string& strValue) { setenv(stOption.szVariable, strValue.c_str(), 1); };
        m_pApp->add_option_function<std::string>(stOption.szFlag, Set, stOption.szHelp)
            ->check([&stOption](const std::string& strValue) { return WrongValue(stOption, strValue); })
            ->group("The set")
            ->type_name("TEXT");
    }
}

CCommandLine::~CCommandLine() = default;

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

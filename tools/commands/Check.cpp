// "check": every mistake in replies, conversations and search schema documents, at its place.
#include <unistd.h>

#include "commands/Command.h"
#include "findings/Check.h"
#include "findings/FindingText.h"
#include "reading/Files.h"
#include "text/Output.h"

namespace
{

struct CheckOptions {
    std::string strFormat = "text";
    bool bStrict = false;
};

// Prints the findings of a file. Says whether it may pass.
bool CheckFile(const std::string& strFile, const Options& stOptions, const CheckOptions& stCheck)
{
    std::string strText;
    std::string strReason;
    if (!ReadAll(strFile, strText, strReason)) {
        Complain(strFile + " cannot be read: " + strReason);
        return false;
    }
    const CPaint paint = stOptions.Paint();
    const bool bExcerpt = isatty(STDOUT_FILENO) != 0;
    const Severity eFails = stCheck.bStrict ? Severity::WARNING : Severity::ERROR;
    bool bPasses = true;
    for (const Finding& stFinding : CheckByForm(strText)) {
        bPasses = bPasses && stFinding.eSeverity < eFails;
        if (stCheck.strFormat == "json") {
            Print(FindingJson(strFile, stFinding));
        } else {
            Print(FindingLine(strFile, stFinding, paint));
            if (bExcerpt) Print(FindingExcerpt(strText, stFinding, paint));
        }
    }
    return bPasses;
}

}  // namespace

void AddCheck(CCommandLine& line)
{
    const auto pCheck = std::make_shared<CheckOptions>();
    CCommand command = line.Add("check", "Find every mistake in replies, and tell where it stands",
                                "  parlo check reply.json\n  parlo check --strict examples/replies/*.json",
                                [pCheck](const Options& stOptions) {
                                    bool bPass = true;
                                    for (const std::string& strFile : stOptions.vFiles)
                                        bPass = CheckFile(strFile, stOptions, *pCheck) && bPass;
                                    return bPass ? kExitOk : kExitFailure;
                                });
    command.Replies("a reply, a conversation or a search schema document; - for standard input");
    command.Text("--format", pCheck->strFormat, "how findings are printed: text or json, an object a line",
                 {"text", "json"});
    command.NoSet();
    command.Flag("--strict", pCheck->bStrict, "Let warnings fail too");
}

// "schema": the JSON Schema of the server's documents.
#include "commands/Command.h"
#include "findings/Description.h"
#include "findings/JsonSchema.h"
#include "text/Output.h"

void AddSchema(CCommandLine& line)
{
    const auto pSearch = std::make_shared<bool>(false);
    CCommand command =
        line.Add("schema", "Print the JSON Schema of a reply, for editors",
                 "  parlo schema > reply.schema.json\n  parlo schema --search-schema", [pSearch](const Options&) {
                     Print(JsonSchemaOf(*pSearch ? Description::kSearchSchema : Description::kReply));
                     return kExitOk;
                 });
    command.Flag("--search-schema", *pSearch, "Print that of the search schema document instead");
}

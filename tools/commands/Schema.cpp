// "schema": the JSON Schema of the server's documents.
#include "commands/Command.h"
#include "findings/JsonSchema.h"
#include "text/Output.h"

void AddSchema(CCommandLine& line)
{
    const auto pDocument = std::make_shared<std::string>("reply");
    CCommand command =
        line.Add("schema", "Print the JSON Schema of a reply, for editors",
                 "  parlo schema > reply.schema.json\n  parlo schema conversation", [pDocument](const Options&) {
                     Print(JsonSchemaOf(*pDocument));
                     return kExitOk;
                 });
    command.Choice("DOCUMENT", *pDocument,
                   "of which document: reply, search (a search schema) or conversation (a line)",
                   {"reply", "search", "conversation"});
}

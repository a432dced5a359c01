// A reply without its content items, and the search schema document.
#include "findings/Description.h"

#include "CADataRepository.h"
#include "findings/Actions.h"

namespace Description
{

namespace
{

using namespace CADataRepository;

// None, or what the viewer was after.
std::vector<std::string_view> Intents()
{
    std::vector<std::string_view> vWords = AllOf<kIntentWords>();
    vWords.emplace_back("");
    return vWords;
}

constexpr Key kErrKeys[] = {
    Key{"code", Type::TEXT_OR_INTEGER, "The error's code."}.Otherwise("reads as 0"),
    Key{"msg", Type::SCALAR, "The error's message, for the log."}.Otherwise("reads as an empty text"),
};
constexpr Object kErr =
    Make("Error", "\"err\"", "Why the server failed. Read only when \"stat\" is \"fail\".", kErrKeys);

constexpr Key kStat = Key{"stat", Type::TEXT, "\"fail\" when the server failed; any other text is a success."}
                          .Otherwise("reads as a success")
                          .Exactly("fail");
constexpr Key kErrOf = Key{"err", Type::OBJECT, "Why the server failed."}.Of(kErr);

constexpr Key kDialogKeys[] = {
    {"dialog_id", Type::TEXT, "The dialog's id. A reply without it clears the one before."},
    Key{"dialog_seq", Type::INTEGER, "The turn's number. Without it the last one stays."}.Otherwise("ignored"),
};
constexpr Object kDialog = Make("Dialog", "\"dialog\"", "Where in the dialog this reply stands.", kDialogKeys);

constexpr Key kNluInfoKeys[] = {{"dialog_type", Type::INTEGER, "The dialog's type. Without it the last one stays."}};
constexpr Object kNluInfo =
    Make("NluInfo", "\"nlu_info\"", "What the language engine found.", kNluInfoKeys, Reading::TAKE);

constexpr Key kResponseInfoKeys[] = {
    {"engine_time", Type::TEXT, "Time that the language engine took."},
    {"content_mgr_time", Type::TEXT, "Time that the content manager took."},
    {"couchbase_time", Type::TEXT, "Time that the database took."},
    {"current_time", Type::TEXT, "When the reply was made."},
    {"server_time", Type::TEXT, "Time that the server took in all."},
    {"query", Type::TEXT, "What the server understood."},
};
constexpr Object kResponseInfo =
    Make("ResponseInfo", "\"response_info\"",
         "How long the server took. For whoever reads the reply; nothing comes of it.", kResponseInfoKeys);

constexpr Key kChannelKeys[] = {
    {"dtv", Type::TEXT, "Digital or analogue."},
    {"number", Type::TEXT, "The channel's number as the viewer knows it."},
    {"major", Type::INTEGER, "The number's first part."},
    {"minor", Type::INTEGER, "The number's second part."},
    {"ptc", Type::INTEGER, "The physical transmission channel."},
    {"name", Type::TEXT, "The channel's name."},
    {"onid", Type::TEXT, "The original network's id."},
    {"tsid", Type::TEXT, "The transport stream's id."},
    {"sid", Type::TEXT, "The service's id."},
    {"freq", Type::TEXT, "The frequency."},
    {"source_id", Type::TEXT, "The channel's source id; it is the command's parameter."},
    {"type", Type::TEXT, "The channel's type."},
};
constexpr Object kChannel =
    Make("Channel", "an object of \"channels\"", "A channel that a command names.", kChannelKeys);

constexpr Key kUMDChannelKeys[] = {
    {"lineup_id", Type::TEXT, "The line-up's id."},
    {"channel_id", Type::TEXT, "The channel's id in it."},
    {"channel_number", Type::TEXT, "The channel's number as the viewer knows it."},
    {"channel_name", Type::TEXT, "The channel's name."},
    Key{"attributes", Type::TEXT, "\"Analog\" anywhere in it makes the channel analogue."}.Holding("Analog"),
};
constexpr Object kUMDChannel =
    Make("CableChannel", "\"umd_channel\"", "A channel of a cable or satellite line-up.", kUMDChannelKeys);

constexpr Key kUMDElementKeys[] = {Key{"umd_channel", Type::OBJECT, "The channel itself."}.Of(kUMDChannel)};
constexpr Object kUMDElement = Make("CableChannelEntry", "an object of \"umd_channels\"",
                                    "Holds one channel of a cable or satellite line-up.", kUMDElementKeys);

constexpr Key kParamKeys[] = {
    {"amount", Type::INTEGER, "Volume or channel steps, or the volume to set."},
    {"index", Type::INTEGER, "Says that there is a position; \"idx\" is the position."},
    Key{"idx", Type::INTEGER, "The position on screen, from 0, beside an integer \"index\"."}.Otherwise(
        "reads as 0 beside an \"index\", else ignored"),
    {"prevnext", Type::TEXT, "Backwards or forwards. No action takes it."},
    {"listorder", Type::INTEGER, "A position in a list. No action takes it."},
    {"time", Type::INTEGER, "Minutes until the set turns itself off."},
    {"direction", Type::TEXT, "A direction. No action takes it."},
    {"gb_function", Type::TEXT, "A function of the game bar."},
    {"play_speed", Type::INTEGER, "The speed of playing. No action takes it."},
    {"target_device", Type::TEXT, "The device that is meant."},
    {"target_status", Type::TEXT, "The state that it shall be in. No action takes it."},
    {"colorkey", Type::TEXT, "A coloured key."},
    {"keyword", Type::TEXT, "What to search for."},
    {"website", Type::TEXT, "The address of a page."},
    {"type", Type::TEXT, "A type. No action takes it."},
    {"channel_no", Type::TEXT, "The number of a channel."},
    Key{"action", Type::TEXT, "Replaces the command's action."}.OneOf(ActionWords),
    Key{"names", Type::SCALARS, "Names to choose from. They replace earlier ones."}.Otherwise("clears the names"),
    Key{"channels", Type::OBJECTS, "Channels to choose from."}.Of(kChannel),
    Key{"umd_channels", Type::OBJECTS, "Channels of a line-up, behind \"channels\"."}.Of(kUMDElement),
};
}  // namespace

const Object kParam =
    Make("CommandParam", "an object of \"params\"",
         "What the action needs. All of them make one command; a later one overwrites.", kParamKeys, Reading::TAKE);

namespace
{

constexpr Key kCommandKeys[] = {
    Key{"action", Type::TEXT, "What the set shall do."}.Needed().OneOf(ActionWords),
    Key{"intent", Type::TEXT,
        "What the viewer was after. Looked up beside names to choose from, of two or three commands."}
        .OneOf(Intents),
    Key{"params", Type::OBJECTS, "What the action needs."}.Of(kParam),
};
constexpr Object kCommand =
    Make("Command", "an object of \"tvcontrol\"",
         "A command. The first one counts; a second one may follow channels or names to choose from.", kCommandKeys);

constexpr Key kRequestParamKeys[] = {
    {"title", Type::TEXT, "The entry's title."},
    {"index", Type::INTEGER, "The entry's position in the list on screen."},
};
constexpr Object kRequestParam = Make("DisplayParam", "an object of \"params\"", "An entry of the list on screen.",
                                      kRequestParamKeys, Reading::TAKE);

constexpr Key kRequestKeys[] = {
    Key{"action", Type::TEXT, "What shall happen to the entries."}
        .OneOf(AllOf<kDisplayActionWords>)
        .Otherwise("code -1"),
    Key{"params", Type::OBJECTS, "The entries that are meant."}.Of(kRequestParam),
};
constexpr Object kRequest = Make("DisplayRequest", "an object of \"displaycontrol\"",
                                 "A request to act on the list that is on screen. Of several the last one counts.",
                                 kRequestKeys, Reading::FILL, "skipped");

constexpr Key kRspKeys[] = {
    kStat,
    kErrOf,
    Key{"domain", Type::TEXTS, "What it is about. With two or more of them \"display_content\" hands the search over."},
    Key{"dialog", Type::OBJECT, "Where in the dialog this reply stands."}.Of(kDialog),
    Key{"system_sentence", Type::TEXT,
        "What the set says. \"{Null}\" stands for nothing. Not said beside \"displaycontrol\"."}
        .Otherwise("ignored")
        .Exactly("{Null}"),
    Key{"tvcontrol", Type::OBJECTS, "The commands. A reply without one is refused."}.Needed().Of(kCommand).Otherwise(
        "the reply holds no command and is refused"),
    Key{"response_info", Type::OBJECT, "How long the server took."}.Of(kResponseInfo),
    Key{"displaycontrol", Type::OBJECTS, "Requests to act on the list that is on screen."}.Of(kRequest),
    Key{"tvcontent", Type::OBJECTS, "What the search found."}.Of(kItem),
    Key{"nlu_info", Type::OBJECT, "What the language engine found."}.Of(kNluInfo),
};
constexpr Object kRsp = Make("Response", "\"rsp\"", "The server's answer to one utterance.", kRspKeys);

constexpr Key kReplyKeys[] = {
    Key{"rsp", Type::OBJECT, "The reply itself."}.Of(kRsp).Needed().Otherwise(
        "the reply holds no command and is refused"),
    {"$schema", Type::TEXT, "Where an editor finds the schema of this document. Nothing else looks at it."},
};

constexpr Key kRuleKeys[] = {
    Key{"from", Type::TEXT, "The first position, as a decimal text."}.Decimal(),
    Key{"to", Type::TEXT, "The last position, as a decimal text."}.Decimal(),
    Key{"cycle", Type::TEXT, "The distance between two positions, as a decimal text; 0 for one only."}.Decimal(),
    Key{"rule", Type::TEXT, "Where the rule puts entries."}
        .Needed()
        .OneOf(AllOf<kSortRuleWords>)
        .Otherwise("takes over the type of the rule before it"),
};
constexpr Object kRule =
    Make("Rule", "an object of \"rules\"", "A rule that puts entries into the list of results.", kRuleKeys);

constexpr Key kEntryKeys[] = {
    Key{"category", Type::TEXT, "The source of results that is meant."}
        .OneOf(AllOf<kSchemaCategoryWords>)
        .Otherwise("takes over the category of the entry before it"),
    Key{"rules", Type::OBJECTS, "The rules, in order."}.Of(kRule),
};
constexpr Object kEntry =
    Make("SchemaEntry", "an object of \"schema\"", "The rules for one source of results.", kEntryKeys);

constexpr Key kSchemaRspKeys[] = {
    kStat,
    kErrOf,
    Key{"schema", Type::OBJECTS, "The rules, by source of results."}.Of(kEntry),
};
constexpr Object kSchemaRsp = Make("SchemaResponse", "\"rsp\"", "The server's answer.", kSchemaRspKeys);

constexpr Key kSearchSchemaKeys[] = {
    Key{"rsp", Type::OBJECT, "The document itself."}.Of(kSchemaRsp).Needed(),
    {"$schema", Type::TEXT, "Where an editor finds the schema of this document. Nothing else looks at it."},
};

constexpr Key kTurnKeys[] = {
    Key{"utterance", Type::TEXT, "What the viewer said."}.Needed(),
    Key{"reply", Type::ANYTHING, "The server's reply, as an object or as a text."}.Needed(),
    Key{"expect", Type::OBJECT, "What a test expects of the record."}.Otherwise("the turn fails a test"),
    {"name", Type::TEXT, "The turn's name, for a test's results."},
    {"comment", Type::ANYTHING, "Whatever its author says of it."},
    {"call", Type::INTEGER, "The call of the log that it was extracted from."},
    {"state", Type::TEXT, "Whether the log had all of the reply."},
    {"utterance_known", Type::BOOLEAN, "Whether the log had the utterance."},
};

}  // namespace

const Object kReply = Make("Reply", "the document", "A reply of the voice server.", kReplyKeys);
const Object kSearchSchema = Make("SearchSchema", "the document",
                                  "A search schema document: how search results are ordered.", kSearchSchemaKeys);
const Object kTurn =
    Make("Turn", "the line", "A line of a conversation: what the viewer said and what the server replied.", kTurnKeys);

const Key* Object::Find(std::string_view szKey) const
{
    for (const Key& stKey : *this)
        if (stKey.szName == szKey) return &stKey;
    return nullptr;
}

const Kind* Object::KindOf(std::string_view szType) const
{
    for (std::size_t i = 0; i < nKinds; ++i)
        if (pKinds[i].szType == szType) return &pKinds[i];
    return nullptr;
}

}  // namespace Description

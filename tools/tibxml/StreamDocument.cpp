#include "StreamDocument.h"

#include <TibXml/EnginePtr.h>
#include <TibXml/WXmlSax.h>
#include <TibXml/platform/BStrT.h>
#include <TibXml/platform/ErrorInfo.h>

#include "Failure.h"
#include "Output.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

// "line:column: reason", as the engine leaves it behind.
std::string lastReason() {
    EnginePtr<IErrorInfo> info;
    _bstr_t text;
    if (GetErrorInfo(0, info.GetAddress()) == S_OK) info->GetDescription(text.GetAddress());
    return toUtf8({text, text.length()});
}

} // namespace

void streamDocument(WXmlSax& sax, InputFile& input, std::string const& name) {
    bool const isDone = sax.ParseIStream(&input);
    input.requireSuccess();
    if (isDone) return;
    finishOutput(); // what was printed comes before the complaint about what follows it
    throw Failure{ExitStatus::notFound, name + ":" + lastReason()};
}

} // namespace tibxml::tool

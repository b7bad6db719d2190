#include "TransformErrors.h"

#include <atomic>
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

#include <libxml/parser.h>
#include <libxslt/xsltutils.h>

#include <libxml/LibxmlTypes.h>
#include <reader/LocalFile.h>

#include "LibxmlDocument.h"

namespace tibxml::transform {

using libxml::inOneLine;
using libxml::view;

namespace {

// What follows the first words of an error says where it led; some of that helps.
constexpr std::size_t enough = 120;

thread_local TransformErrors* current = nullptr;

// The process's handler: ours while there are any users of it.
std::mutex handlerMutex;
int handlerUsers = 0;
using Handler = void (*)(void* data, char const* format, ...);
std::atomic<Handler> handlerBefore{nullptr};

std::string formatted(char const* format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    int const size = std::vsnprintf(nullptr, 0, format, arguments);
    std::string text(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    if (size > 0) std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

// Of the form "runtime error: file a.xsl line 3 element if\n", where the parts may be missing.
bool announcesError(std::string_view text) noexcept {
    if (!text.ends_with('\n')) return false;
    for (std::string_view const kind : {"compilation error", "runtime error", "error"}) {
        if (!text.starts_with(kind)) continue;
        std::string_view const rest = text.substr(kind.size());
        if (rest == "\n" || rest.starts_with(": file ") || rest.starts_with(": element "))
            return true;
    }
    return false;
}

// The word after a key of such a line.
std::string_view wordAfter(std::string_view text, std::string_view key) noexcept {
    std::size_t const at = text.find(key);
    if (at == std::string_view::npos) return {};
    text.remove_prefix(at + key.size());
    return text.substr(0, text.find_first_of(" \n"));
}

// The name in what libxslt says instead of running an instruction that it does not know; empty for
// any other line.
std::string_view unknownInstruction(std::string_view line) noexcept {
    constexpr std::string_view start = "xsltApplySequenceConstructor: ";
    constexpr std::string_view end = " was not compiled";
    if (!line.starts_with(start) || !line.ends_with(end)) return {};
    line.remove_prefix(start.size());
    line.remove_suffix(end.size());
    return line;
}

std::string shownFile(std::string_view url) {
    return reader::pathOfUrl(url).value_or(std::string{url});
}

} // namespace

// What the libraries call from their C frames, through which no exception may pass.
struct TransformErrorEvents {
    template <class Step>
    static void guarded(TransformErrors& errors, Step step) noexcept {
        try {
            step();
        } catch (...) {
            errors.isOutOfMemory_ = true;
        }
    }

    // NOLINTNEXTLINE(cert-dcl50-cpp): the libraries call it with what printf takes
    static void piece(void* data, char const* format, ...) noexcept {
        va_list arguments;
        va_start(arguments, format);
        TransformErrors* const errors = current;
        if (errors != nullptr) {
            bool const isText = std::string_view{format} == "%s";
            guarded(*errors, [&] { errors->addPiece(formatted(format, arguments), isText); });
        } else if (auto const before = handlerBefore.load(); before != nullptr) {
            handOn(before, data, format, arguments);
        }
        va_end(arguments);
    }

    static void handOn(Handler handler, void* data, char const* format,
                       va_list arguments) noexcept {
        try {
            handler(data, "%s", formatted(format, arguments).c_str());
        } catch (std::bad_alloc const&) {
            handler(data, "%s", format);
        }
    }

    // For the little that libxml2 says without telling what kind of error it is.
    // NOLINTNEXTLINE(cert-dcl50-cpp): the libraries call it with what printf takes
    static void detail(void* data, char const* format, ...) noexcept {
        auto& errors = *static_cast<TransformErrors*>(data);
        va_list arguments;
        va_start(arguments, format);
        guarded(errors, [&] { errors.addDetail(formatted(format, arguments)); });
        va_end(arguments);
    }

    static void parserError(void* data, xmlError* error) noexcept {
        auto& errors = *static_cast<TransformErrors*>(data);
        if (error->code == XML_ERR_NO_MEMORY) errors.isOutOfMemory_ = true;
        guarded(errors, [&] { errors.addParserError(*error); });
    }
};

namespace {

// Pointer-sized and written as one, because other threads may read it at any time; its context
// stays as it is.
void exchangeHandler(Handler from, Handler to) noexcept {
    std::atomic_ref<Handler>{xsltGenericError}.compare_exchange_strong(from, to);
}

void addHandlerUser() {
    std::lock_guard const lock{handlerMutex};
    if (handlerUsers++ != 0) return;
    handlerBefore = xsltGenericError;
    exchangeHandler(handlerBefore, TransformErrorEvents::piece);
}

void removeHandlerUser() noexcept {
    std::lock_guard const lock{handlerMutex};
    if (--handlerUsers == 0) exchangeHandler(TransformErrorEvents::piece, handlerBefore);
}

} // namespace

TransformErrors::TransformErrors(tree::Document const& document, std::string_view url)
    : document_{document},
      url_{url},
      outer_{current},
      libxmlErrors_{TransformErrorEvents::parserError, this, TransformErrorEvents::detail} {
    addHandlerUser();
    current = this;
}

TransformErrors::~TransformErrors() {
    current = outer_;
    removeHandlerUser();
}

void TransformErrors::watch(xsltTransformContext& context) noexcept {
    xsltSetTransformErrorFunc(&context, nullptr, TransformErrorEvents::piece);
}

void TransformErrors::requireMemory() const {
    if (isOutOfMemory_) throw std::bad_alloc{};
}

void TransformErrors::addDetail(std::string_view text) {
    if (details_.empty()) details_ = inOneLine(text);
}

void TransformErrors::addPiece(std::string_view text, bool isText) {
    if (isText && !announced_) return addMessage(text);
    if (!isText && announcesError(text)) {
        if (place_.empty()) place_ = placeIn(text);
        announced_ = true;
        return;
    }
    std::string line = inOneLine(text);
    if (!line.empty()) addLine(std::move(line));
}

void TransformErrors::addLine(std::string line) {
    if (std::string_view const name = unknownInstruction(line); !name.empty()) {
        if (name == "fallback") return; // it does nothing where nothing failed
        missesInstruction_ = true;
        addWords("there is no instruction xsl:" + std::string{name});
    } else if (std::exchange(announced_, false)) {
        addWords(line);
    } else {
        message_ = std::move(line);
    }
}

void TransformErrors::addMessage(std::string_view text) {
    constexpr std::size_t most = std::size_t{1} << 16;
    while (text.ends_with('\n'))
        text.remove_suffix(1);
    message_ = inOneLine(text);
    if (messages_.size() >= most) return;
    if (!messages_.empty()) messages_ += '\n';
    messages_ += text;
}

void TransformErrors::addWords(std::string_view words) {
    if (errors_.size() >= enough) return;
    if (!errors_.empty()) errors_ += "; ";
    errors_ += words;
}

void TransformErrors::addParserError(xmlError const& error) {
    if (error.level < XML_ERR_ERROR || !details_.empty()) return;
    std::string_view const message{error.message != nullptr ? error.message : ""};
    details_ = inOneLine(message);
    if (error.file == nullptr || error.domain == XML_FROM_XPATH) return;
    details_ = shownFile(error.file) + ":" + std::to_string(error.line) + ": " + details_;
}

std::string TransformErrors::placeIn(std::string_view announcement) const {
    std::string_view const file = wordAfter(announcement, ": file ");
    std::string_view const line = wordAfter(announcement, " line ");
    std::string_view const element = wordAfter(announcement, "element ");
    std::size_t number = 0;
    std::from_chars(line.data(), line.data() + line.size(), number);
    return placeOf(file, number, element);
}

std::string TransformErrors::placeOf(std::string_view file, std::size_t line,
                                     std::string_view element) const {
    if (file.empty() || file == url_) {
        std::string path = pathOfElement(line);
        return path.empty() ? std::string{element} : path;
    }
    std::string place = shownFile(file);
    if (line != 0) place += ":" + std::to_string(line);
    if (element.empty()) return place;
    return place.append(": ").append(element);
}

// As a path from the root with positions: /xsl:stylesheet[1]/xsl:template[2].
std::string TransformErrors::pathOfElement(std::size_t number) const {
    std::string path;
    tree::Node const* node = number != 0 ? elementNumber(document_, number) : nullptr;
    for (; node != nullptr && node->is(tree::NodeKind::element); node = node->parent) {
        std::size_t position = 1;
        for (tree::Node const* n = node->previousSibling(); n != nullptr; n = n->previousSibling())
            position += n->name == node->name ? 1 : 0;
        std::string step = "/";
        step.append(node->name->qualified);
        step += "[" + std::to_string(position) + "]";
        path.insert(0, step);
    }
    return path;
}

std::string TransformErrors::reason() const {
    std::string const& words = errors_.empty() ? message_ : errors_;
    std::string reason = words.empty() ? "the transformation failed" : words;
    if (!place_.empty() && !errors_.empty()) reason = place_ + ": " + reason;
    if (!details_.empty()) reason += " (" + details_ + ")";
    return reason;
}

std::string TransformErrors::reasonAt(xmlNode const& element, std::string_view words) const {
    std::string reason = placeOf(view(element.doc->URL), element.line, view(element.name));
    return reason.append(": ").append(words);
}

} // namespace tibxml::transform

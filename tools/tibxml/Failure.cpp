#include "Failure.h"

#include <cstdio>
#include <exception>
#include <new>

#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/platform/ComError.h>

#include "Output.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

ExitStatus report(Failure const& failure) {
    complain(failure.line);
    return failure.status;
}

ExitStatus reportFailed(std::string const& message) {
    return report(failure(ExitStatus::failed, message));
}

// The reader of the output may stop early: nothing to complain about.
ExitStatus report(OutputFailure const& failure) {
    return failure.isClosedByReader ? ExitStatus::found : reportFailed(failure.message);
}

ExitStatus reportByKind() {
    try {
        throw;
    } catch (Failure const& failure) {
        return report(failure);
    } catch (OutputFailure const& failure) {
        return report(failure);
    } catch (_com_error const& error) {
        return reportFailed(describe(error));
    } catch (WXmlValueTypeNotFoundException const& error) {
        return report(
            failure(ExitStatus::notFound, "no value of type " + toUtf8(error.GetMessageW())));
    } catch (int) { // the library's own way to say that nothing is there
        return report(failure(ExitStatus::notFound, "nothing found"));
    } catch (std::bad_alloc const&) {
        throw;
    } catch (std::exception const& error) {
        return reportFailed(error.what());
    }
}

} // namespace

Failure failure(ExitStatus status, std::string const& message) {
    return {status, "tibxml: " + message};
}

void complain(std::string const& line) {
    std::string const printed = oneLine(line) + '\n';
    std::fwrite(printed.data(), 1, printed.size(), stderr);
}

ExitStatus reportException() noexcept {
    try {
        return reportByKind();
    } catch (std::bad_alloc const&) {
        std::fputs("tibxml: out of memory\n", stderr);
    } catch (...) {
        std::fputs("tibxml: unknown error\n", stderr);
    }
    return ExitStatus::failed;
}

std::string describe(_com_error const& error) {
    _bstr_t const description = error.Description();
    if (description.length() > 0) return toUtf8({description, description.length()});
    return toUtf8(error.ErrorMessage());
}

} // namespace tibxml::tool

#include "Json.h"

#include "../Settings.h"

namespace bench {

// None of the others has anything like it.
std::vector<Operation> jsonOperations() {
    std::vector<Operation> all;
    all.push_back(
        {"XML to JSON text and back", {tibxmlJson(largeSettings()), nullptr, nullptr}, {}});
    return all;
}

} // namespace bench

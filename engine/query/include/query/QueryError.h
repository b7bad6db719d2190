// What is wrong with an expression or with a text of namespace declarations, and where.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace tibxml::query {

// what() names the column and the fault, in UTF-8: "column 7: expected ']'".
class QueryError : public std::runtime_error {
public:
    // Columns count the wide characters of the text from 1; an unexpected end lies one behind the
    // last character.
    QueryError(std::size_t column, std::string const& fault)
        : std::runtime_error{"column " + std::to_string(column) + ": " + fault},
          column_{column} {}

    std::size_t column() const noexcept { return column_; }

private:
    std::size_t column_;
};

} // namespace tibxml::query

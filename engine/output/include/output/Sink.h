// Where output goes, piece by piece, so that a large document never has to exist twice.
#pragma once

#include <string>
#include <string_view>

namespace tibxml::output {

class Sink {
public:
    Sink(Sink const&) = delete;
    Sink& operator=(Sink const&) = delete;

    // Takes the next piece, which is valid during the call only. What it throws ends the writing
    // and reaches whoever asked for the output; what came before is then to be discarded.
    virtual void write(std::string_view piece) = 0;

protected:
    Sink() = default;
    ~Sink() = default;
};

// Appends everything to a string.
class StringSink final : public Sink {
public:
    explicit StringSink(std::string& out) noexcept : out_{out} {}

    void write(std::string_view piece) override { out_.append(piece); }

private:
    std::string& out_;
};

} // namespace tibxml::output

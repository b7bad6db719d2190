#pragma once

#include <functional>

#include "Failure.h"

namespace CLI {
class App;
} // namespace CLI

namespace tibxml::tool {

/// What the program does after its arguments have been understood.
using Task = std::function<ExitStatus()>;

/// Adds a command with its arguments to the program. When that command is called, it puts what has
/// to be done into `task`, which must outlive the parsing of the arguments.
using AddCommand = void(CLI::App& program, Task& task);

// Every command is one file, and its name here.
AddCommand addCheck;
AddCommand addQuery;
AddCommand addGet;
AddCommand addSet;
AddCommand addDelete;
AddCommand addLayered;
AddCommand addPath;
AddCommand addJson;
AddCommand addXml;
AddCommand addStrings;
AddCommand addEvents;
AddCommand addStats;
AddCommand addValidate;
AddCommand addTransform;

// In the order of the program's help.
inline constexpr AddCommand* allCommands[] = {
    addCheck,     //
    addQuery,     //
    addGet,       //
    addSet,       //
    addDelete,    //
    addLayered,   //
    addPath,      //
    addJson,      //
    addXml,       //
    addStrings,   //
    addEvents,    //
    addStats,     //
    addValidate,  //
    addTransform, //
};

} // namespace tibxml::tool

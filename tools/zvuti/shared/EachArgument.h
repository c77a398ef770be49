// Commands that do the same with each of their arguments.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tool {

/// Calls handle(argument) for each argument; for each line of standard input that is not blank, if there is
/// no argument or only "-". A Failure is reported and the next argument follows. Returns the highest of the
/// results; kUsage counts for a Failure. Throws a Failure if standard input has no line to handle; `what`
/// names what one line is.
int ForEachArgument(const std::vector<std::string>& arguments, const std::string& what,
                    const std::function<int(const std::string&)>& handle);

}  // namespace tool

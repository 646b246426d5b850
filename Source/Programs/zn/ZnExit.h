// The exit statuses of the zn commands, in a header of its own so code that does not parse the
// command line (ZnHost) can use them without CLI11.
#pragma once

/**
 * The exit status of every zn command. Messages go to standard error; on Usage nothing was run
 * and nothing is printed on standard output.
 */
namespace ZnExit
{
/** Done as asked. */
constexpr int Success = 0;
/** The work ran and reported failure: a called function returned false, a file decoded to
 * nothing, an output could not be written. */
constexpr int Failed = 1;
/** The command line or its input is wrong: an unknown command, option, function or parameter, a
 * value that does not fit, an input file that cannot be read. */
constexpr int Usage = 2;
} // namespace ZnExit

// Exit statuses of the export and preview commands.
#pragma once

namespace ZnExportCommandStatus
{
constexpr int Success = 0;
// A file that cannot be read or written, is not a clip of the kind asked for, or has no frames.
constexpr int InputError = 1;
// Options that do not fit together (the option parser's own errors keep its status).
constexpr int UsageError = 2;
} // namespace ZnExportCommandStatus

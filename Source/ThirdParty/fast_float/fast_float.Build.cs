// fast_float for the engine build: the correctly rounded number reader the JSON readers use for
// the rare numbers of more than nineteen digits (std::from_chars cannot read floating point in
// the libc++ the engine uses on Linux, Mac and Android). Header-only; nothing third-party is
// committed here: a user places fast_float 3.9 or later (MIT, Apache-2.0 or Boost licensed; the
// single-header release fast_float.h) as Source/ThirdParty/fast_float/include/fast_float/fast_float.h,
// or points the ZN_FAST_FLOAT_DIR environment variable at a folder holding fast_float/fast_float.h.
//
// When it is missing, project files are still generated: a warning says what to do, and compiling
// ZnUtilsTools stops at the include with the same instructions (Private/ZnJsonValidation.cpp).
using System;
using System.IO;
using EpicGames.Core;
using UnrealBuildTool;

public class fast_float : ModuleRules
{
	public fast_float(ReadOnlyTargetRules Target) : base(Target)
	{
		Type = ModuleType.External;

		string Root = Environment.GetEnvironmentVariable("ZN_FAST_FLOAT_DIR");
		if (string.IsNullOrEmpty(Root))
		{
			Root = Path.Combine(ModuleDirectory, "include");
		}
		if (!File.Exists(Path.Combine(Root, "fast_float", "fast_float.h")))
		{
			Log.TraceWarning("Zenvora: fast_float was not found as {0}. Place its single-header release there " +
				"as fast_float/fast_float.h, or set ZN_FAST_FLOAT_DIR to the folder that holds fast_float/, then build again.",
				Path.Combine(Root, "fast_float", "fast_float.h"));
			PublicDefinitions.Add("ZN_FAST_FLOAT_MISSING=1");
			return;
		}
		PublicSystemIncludePaths.Add(Root);
	}
}

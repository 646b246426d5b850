// simdjson for the engine build. Nothing third-party is committed to this repository: a user
// places simdjson 3.0.1 (the single-header release: simdjson.h and simdjson.cpp, Apache-2.0)
// in Source/ThirdParty/simdjson/include before building the plugin, or points the
// ZN_SIMDJSON_DIR environment variable at a folder holding them. The two files are compiled
// into the module, so no separate library has to be built per platform.
//
// When they are missing, project files are still generated (a build tool exception here would
// stop the generation for the user's whole project): a warning says what to do, and compiling
// ZnUtilsTools stops at the first include with the same instructions (Private/ZnSimdjson.h).
using System;
using System.IO;
using EpicGames.Core;
using UnrealBuildTool;

public class simdjson : ModuleRules
{
	public simdjson(ReadOnlyTargetRules Target) : base(Target)
	{
		Type = ModuleType.External;

		string Root = Environment.GetEnvironmentVariable("ZN_SIMDJSON_DIR");
		if (string.IsNullOrEmpty(Root))
		{
			Root = Path.Combine(ModuleDirectory, "include");
		}
		if (!File.Exists(Path.Combine(Root, "simdjson.h")) || !File.Exists(Path.Combine(Root, "simdjson.cpp")))
		{
			Log.TraceWarning("Zenvora: simdjson 3.0.1 was not found in {0}. Place its simdjson.h and simdjson.cpp " +
				"there, or set ZN_SIMDJSON_DIR to their folder, then build again.", Root);
			PublicDefinitions.Add("ZN_SIMDJSON_MISSING=1");
			return;
		}

		PublicSystemIncludePaths.Add(Root);
		// Exceptions stay off in the engine; simdjson reports errors through error codes.
		PublicDefinitions.Add("SIMDJSON_EXCEPTIONS=0");
		PublicDefinitions.Add("ZN_SIMDJSON_SINGLE_HEADER=1");
	}
}

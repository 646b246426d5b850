// Build rules of the module inside Unreal Engine 5.0.
using UnrealBuildTool;

public class ZnUtilsTools : ModuleRules
{
	public ZnUtilsTools(ReadOnlyTargetRules Target) : base(Target)
	{
		PCHUsage = ModuleRules.PCHUsageMode.UseExplicitOrSharedPCHs;
		CppStandard = CppStandardVersion.Cpp17;

		PublicDependencyModuleNames.AddRange(new string[]
		{
			"Core",
			"CoreUObject",
			"Engine",
			"HTTP",
			"Json",
			// The JSON decoders read with simdjson; see Source/ThirdParty/simdjson/simdjson.Build.cs.
			"simdjson"
		});
	}
}

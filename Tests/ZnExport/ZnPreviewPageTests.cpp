// zn preview: the page is written, opened in headless Chromium (Debian's chromium package) and
// driven through window.znPreview by PreviewDriver.py over the DevTools protocol. Screenshots are
// compared by the hash of their PNG bytes (the same pixels give the same bytes in one browser).
// A missing browser fails the test: scripts/install-deps.sh installs it.
#include "ZnExportTestHelpers.h"
#include "ZnMotionGenerator.h"
#include "ZnRunner.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

using namespace ZnTest;

namespace
{
const char* const Chromium = "/usr/bin/chromium";

// A mono 16-bit WAV of Seconds of a quiet tone.
std::string ToneWav(int Seconds)
{
	const uint32_t Rate = 8000;
	const uint32_t DataBytes = Rate * 2 * uint32_t(Seconds);
	std::string Out = "RIFF";
	const auto U32 = [&Out](uint32_t V)
	{
		for (int Byte = 0; Byte < 4; ++Byte)
		{
			Out += char((V >> (8 * Byte)) & 0xFF);
		}
	};
	const auto U16 = [&Out](uint16_t V)
	{
		Out += char(V & 0xFF);
		Out += char(V >> 8);
	};
	U32(36 + DataBytes);
	Out += "WAVEfmt ";
	U32(16);
	U16(1);
	U16(1);
	U32(Rate);
	U32(Rate * 2);
	U16(2);
	U16(16);
	Out += "data";
	U32(DataBytes);
	for (uint32_t Sample = 0; Sample < Rate * uint32_t(Seconds); ++Sample)
	{
		U16(uint16_t(int16_t((Sample % 40) * 100 - 2000)));
	}
	return Out;
}

class ZnPreviewPageTest : public FZnFolderTest
{
protected:
	std::string WritePreview(bool bBody, bool bFace, bool bAudio)
	{
		FZnGenBodyOptions BodyOptions;
		BodyOptions.FrameCount = 90;
		FZnGenFaceOptions FaceOptions;
		FaceOptions.FrameCount = 90;
		std::vector<std::string> Args = {"preview", "-o", PathOf("page")};
		if (bBody)
		{
			Args.insert(Args.end(),
				{"--body",
					Write("body.json", FZnMotionGenerator::BodyToJson(FZnMotionGenerator::GenerateBody(BodyOptions)))});
		}
		if (bFace)
		{
			Args.insert(Args.end(),
				{"--face",
					Write("face.json", FZnMotionGenerator::FaceToJson(FZnMotionGenerator::GenerateFace(FaceOptions)))});
		}
		if (bAudio)
		{
			Args.insert(Args.end(), {"--audio", Write("speech.wav", ToneWav(3))});
		}
		const FRun Run = RunZn(Args);
		EXPECT_EQ(Run.Status, 0) << Run.Err;
		EXPECT_EQ(Run.Out, "wrote " + PathOf("page/index.html") + "\n");
		return PathOf("page/index.html");
	}

	// Runs the steps in the browser; the report of PreviewDriver.py.
	Json Drive(const std::string& Page, const Json& Steps)
	{
		if (!std::filesystem::exists(Chromium))
		{
			ADD_FAILURE() << "Chromium is missing (" << Chromium << "); run scripts/install-deps.sh";
			return Json();
		}
		WriteAll(PathOf("steps.json"), Steps.dump());
		const std::string Command = "/usr/bin/python3 " + ShellQuote(ZN_PREVIEW_DRIVER) + " " + ShellQuote(Chromium) +
			" " + ShellQuote("file://" + Page) + " " + ShellQuote(PathOf("steps.json")) + " " +
			ShellQuote(PathOf("report.json")) + " 2>" + ShellQuote(PathOf("driver.txt"));
		const int Status = std::system(Command.c_str());
		EXPECT_EQ(Status, 0) << ReadAll(PathOf("driver.txt"));
		const Json Report = Json::parse(ReadAll(PathOf("report.json")), nullptr, false);
		EXPECT_TRUE(Report.is_object());
		return Report.is_object() ? Report : Json();
	}

	static void ExpectQuietAndOffline(const Json& Report, const std::string& Page)
	{
		EXPECT_EQ(Report["console"], Json::array()) << Report["console"].dump();
		EXPECT_EQ(Report["exceptions"], Json::array()) << Report["exceptions"].dump();
		ASSERT_TRUE(Report["requests"].is_array());
		for (const Json& Url : Report["requests"])
		{
			const std::string Text = Url.get<std::string>();
			EXPECT_TRUE(Text == "file://" + Page || Text.rfind("data:", 0) == 0) << Text;
		}
	}
};
} // namespace

TEST_F(ZnPreviewPageTest, PageLoadsOfflineAndShowsTheFrameOfEachTime)
{
	const std::string Page = WritePreview(true, true, true);
	const std::string Html = ReadAll(Page);
	EXPECT_EQ(Html.find("http://"), std::string::npos);
	EXPECT_EQ(Html.find("https://"), std::string::npos);
	EXPECT_NE(Html.find("data:audio/wav;base64,UklGR"), std::string::npos);

	const Json Steps = Json::array({
		{{"eval", "znPreview.seek(0.5); znPreview.state()"}},
		{{"shot", "#figure"}, {"save", PathOf("at_0.50.png")}},
		// 0.52 s is still frame 15.
		{{"eval", "znPreview.seek(0.52); znPreview.state()"}},
		{{"shot", "#figure"}},
		{{"eval", "znPreview.seek(2.0); znPreview.state()"}},
		{{"shot", "#figure"}, {"save", PathOf("at_2.00.png")}},
		// Scrubbing: the slider moved to 1.0 s as a person would, through its input event.
		{{"eval",
			"(function () { const s = document.getElementById('scrub'); s.value = '1.0';"
			" s.dispatchEvent(new Event('input')); return znPreview.state(); })()"}},
		{{"shot", "#figure"}},
		{{"eval", "znPreview.seek(1.0); znPreview.state()"}},
		{{"shot", "#figure"}},
		{{"shot", "#heat"}},
		{{"eval", "znPreview.seek(0.5); znPreview.state()"}},
		{{"shot", "#heat"}},
		{{"shot", "#title"}},
		{{"eval", "znPreview.seek(2.0); znPreview.state()"}},
		{{"shot", "#title"}},
		// The sound follows a seek once the browser knows its length.
		{{"eval",
			"new Promise(function (done) { const a = document.getElementById('audio'); (function wait() {"
			" if (a.readyState >= 1) { znPreview.seek(1.25); done([a.duration, a.currentTime]); }"
			" else { setTimeout(wait, 20); } })(); })"}},
	});
	const Json Report = Drive(Page, Steps);
	ASSERT_TRUE(Report.is_object());
	ExpectQuietAndOffline(Report, Page);
	const Json& R = Report["results"];
	ASSERT_EQ(R.size(), Steps.size());

	EXPECT_EQ(R[0]["frame"], 15);
	EXPECT_EQ(R[0]["frameText"], "frame 15 / 90");
	EXPECT_EQ(R[0]["timeText"], "0.500 s");
	EXPECT_EQ(R[2]["frame"], 15);
	EXPECT_EQ(R[4]["frame"], 60);
	EXPECT_EQ(R[6]["time"], 1.0);
	EXPECT_EQ(R[6]["frame"], 30);
	EXPECT_EQ(R[6]["frameText"], "frame 30 / 90");

	// The figure's area: the same frame draws the same pixels, another frame other pixels.
	EXPECT_EQ(R[1]["sha256"], R[3]["sha256"]);
	EXPECT_NE(R[1]["sha256"], R[5]["sha256"]);
	EXPECT_EQ(R[7]["sha256"], R[9]["sha256"]);
	EXPECT_NE(R[7]["sha256"], R[1]["sha256"]);
	// The heat map's cursor moves with the time; the heading does not change at all.
	EXPECT_NE(R[10]["sha256"], R[12]["sha256"]);
	EXPECT_EQ(R[13]["sha256"], R[15]["sha256"]);
	EXPECT_NEAR(R[16][0].get<double>(), 3.0, 1e-3);
	EXPECT_NEAR(R[16][1].get<double>(), 1.25, 1e-3);
}

TEST_F(ZnPreviewPageTest, PlayPauseAndSpeedDriveTheClock)
{
	const std::string Page = WritePreview(true, true, false);
	const Json Steps = Json::array({
		{{"eval", "znPreview.setSpeed(2); znPreview.state().speed"}},
		// Plays until the clock has moved past half a second of the clip, then pauses.
		{{"eval",
			"new Promise(function (done) { znPreview.play(); (function wait() {"
			" const s = znPreview.state(); if (s.time > 0.5) { znPreview.pause(); done(s.playing); }"
			" else { requestAnimationFrame(wait); } })(); })"}},
		{{"eval", "znPreview.state()"}},
		{{"eval", "document.getElementById('speed').value"}},
		// Playing to the end stops there.
		{{"eval",
			"new Promise(function (done) { znPreview.seek(2.9); znPreview.play(); (function wait() {"
			" const s = znPreview.state(); if (!s.playing) { done(s); } else { requestAnimationFrame(wait); }"
			" })(); })"}},
	});
	const Json Report = Drive(Page, Steps);
	ASSERT_TRUE(Report.is_object());
	ExpectQuietAndOffline(Report, Page);
	const Json& R = Report["results"];
	ASSERT_EQ(R.size(), Steps.size());
	EXPECT_EQ(R[0], 2);
	EXPECT_EQ(R[1], true);
	EXPECT_EQ(R[2]["playing"], false);
	EXPECT_GT(R[2]["time"].get<double>(), 0.5);
	EXPECT_EQ(R[3], "2");
	EXPECT_EQ(R[4]["time"], 3.0);
	EXPECT_EQ(R[4]["frame"], 89);
}

TEST_F(ZnPreviewPageTest, FaceOnlyAndBodyOnlyPagesLoadCleanly)
{
	for (const bool bBody : {false, true})
	{
		const std::string Page = WritePreview(bBody, !bBody, false);
		const Json Report = Drive(Page, Json::array({{{"eval", "znPreview.seek(1.5); znPreview.state()"}}}));
		ASSERT_TRUE(Report.is_object());
		ExpectQuietAndOffline(Report, Page);
		EXPECT_EQ(Report["results"][0]["frame"], 45);
		EXPECT_EQ(Report["results"][0]["bodyFrame"], bBody ? 45 : -1);
		EXPECT_EQ(Report["results"][0]["faceFrame"], bBody ? -1 : 45);
	}
}

TEST_F(ZnPreviewPageTest, FigureIsPosedLikeTheBvhExport)
{
	const std::string Page = WritePreview(true, false, false);
	ASSERT_EQ(RunZn({"export", "bvh", PathOf("body.json"), "-o", PathOf("body.bvh")}).Status, 0);
	const ZnExportTest::FBvhFile File = ZnExportTest::ReadBvh(ReadAll(PathOf("body.bvh")));
	ASSERT_EQ(File.Error, "");
	const std::vector<int> Frames = {0, 37, 89};
	Json Steps = Json::array();
	for (const int Frame : Frames)
	{
		Steps.push_back({{"eval", "znPreview.seek(" + std::to_string(Frame) + " / 30); znPreview.joints()"}});
	}
	const Json Report = Drive(Page, Steps);
	ASSERT_TRUE(Report.is_object());
	ExpectQuietAndOffline(Report, Page);
	for (size_t Step = 0; Step < Frames.size(); ++Step)
	{
		const Json& Joints = Report["results"][Step];
		const auto Expected = ZnExportTest::BvhWorldPositions(File, Frames[Step]);
		ASSERT_EQ(Joints.size(), File.Joints.size());
		for (size_t Joint = 0; Joint < File.Joints.size(); ++Joint)
		{
			EXPECT_EQ(Joints[Joint][0], File.Joints[Joint].Name);
			for (size_t Axis = 0; Axis < 3; ++Axis)
			{
				// The page keeps rotations to 1e-5 and the root to 0.01 cm.
				EXPECT_NEAR(Joints[Joint][1][Axis].get<double>(), Expected[Joint][Axis], 0.02)
					<< File.Joints[Joint].Name << " frame " << Frames[Step];
			}
		}
	}
}

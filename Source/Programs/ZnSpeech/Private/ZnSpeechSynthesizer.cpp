#include "ZnSpeechSynthesizer.h"

#include "ZnProsody.h"
#include "ZnVoiceChoice.h"

#include <espeak-ng/speak_lib.h>

#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <mutex>
#include <thread>

namespace
{
bool IsBlank(const std::string& Text)
{
	for (const char Character : Text)
	{
		if (Character != ' ' && Character != '\t' && Character != '\r' && Character != '\n')
		{
			return false;
		}
	}
	return true;
}

// Only the synthesis thread runs the synthesiser, so its output callback can find the result being
// filled through a thread-local instead of trusting the event's user pointer.
thread_local FZnSynthesizedSpeech* GSpeechBeingSynthesized = nullptr;

int ReceiveSynthesizerOutput(short* Samples, int SampleCount, espeak_EVENT* Events)
{
	FZnSynthesizedSpeech* Out = GSpeechBeingSynthesized;
	if (Out == nullptr)
	{
		return 1;
	}
	if (Samples != nullptr && SampleCount > 0)
	{
		Out->Samples.insert(Out->Samples.end(), Samples, Samples + SampleCount);
	}
	const double Rate = Out->SampleRate > 0 ? Out->SampleRate : 1.0;
	for (const espeak_EVENT* Event = Events; Event != nullptr && Event->type != espeakEVENT_LIST_TERMINATED; ++Event)
	{
		const double Time = Event->sample / Rate;
		if (Event->type == espeakEVENT_PHONEME)
		{
			// The name is at most 8 bytes and not terminated when it uses all of them.
			const size_t Length = strnlen(Event->id.string, sizeof(Event->id.string));
			Out->Phonemes.push_back({Time, std::string(Event->id.string, Length)});
		}
		else if (Event->type == espeakEVENT_WORD)
		{
			// The synthesiser counts characters from 1; it reports a zero-length word at some clause ends.
			if (Event->length > 0)
			{
				Out->Words.push_back({Time, Event->text_position - 1, Event->length});
			}
		}
	}
	return 0;
}

class FZnEspeakSynthesizer final : public FZnSpeechSynthesizer
{
public:
	FZnEspeakSynthesizer()
		: Worker([this] { Run(); })
	{
	}

	~FZnEspeakSynthesizer() override
	{
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			bStopping = true;
		}
		Wake.notify_all();
		Worker.join();
	}

	bool Synthesize(const FZnSpeechRequest& Request, FZnSynthesizedSpeech& Out, std::string& Error) override
	{
		if (IsBlank(Request.Text))
		{
			Error = "the text is empty";
			return false;
		}
		if (Request.Text.size() > ZnMaxSpeechTextBytes)
		{
			Error = "the text is longer than " + std::to_string(ZnMaxSpeechTextBytes) + " bytes";
			return false;
		}
		FJob Job(Request);
		{
			std::unique_lock<std::mutex> Lock(Mutex);
			if (bStopping)
			{
				Error = "the speech synthesiser has shut down";
				return false;
			}
			Queue.push_back(&Job);
			Wake.notify_all();
			Done.wait(Lock, [&Job] { return Job.bDone; });
		}
		if (!Job.bOk)
		{
			Error = Job.Error;
			return false;
		}
		Out = std::move(Job.Result);
		return true;
	}

private:
	struct FJob
	{
		explicit FJob(const FZnSpeechRequest& InRequest)
			: Request(InRequest)
		{
		}

		const FZnSpeechRequest& Request;
		FZnSynthesizedSpeech Result;
		std::string Error;
		bool bOk = false;
		bool bDone = false;
	};

	void Run()
	{
		const int SampleRate = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 100, nullptr,
			espeakINITIALIZE_PHONEME_EVENTS | espeakINITIALIZE_PHONEME_IPA | espeakINITIALIZE_DONT_EXIT);
		if (SampleRate > 0)
		{
			espeak_SetSynthCallback(ReceiveSynthesizerOutput);
		}
		for (;;)
		{
			FJob* Job = nullptr;
			{
				std::unique_lock<std::mutex> Lock(Mutex);
				Wake.wait(Lock, [this] { return bStopping || !Queue.empty(); });
				if (Queue.empty())
				{
					break;
				}
				Job = Queue.front();
				Queue.pop_front();
			}
			if (SampleRate > 0)
			{
				Job->bOk = RunOne(*Job, SampleRate);
			}
			else
			{
				Job->Error = "the speech synthesiser could not start (is espeak-ng-data installed?)";
			}
			{
				std::lock_guard<std::mutex> Lock(Mutex);
				Job->bDone = true;
			}
			Done.notify_all();
		}
		if (SampleRate > 0)
		{
			espeak_Terminate();
		}
	}

	static bool SelectVoice(const FZnSpeechRequest& Request, std::string& Chosen)
	{
		if (!Request.VoiceName.empty() && Request.VoiceName.find('+') == std::string::npos)
		{
			const std::string Named = Request.VoiceName + VoiceVariantFor(Request.Gender);
			if (espeak_SetVoiceByName(Named.c_str()) == EE_OK)
			{
				Chosen = Named;
				return true;
			}
		}
		Chosen = DefaultVoiceFor(Request);
		return espeak_SetVoiceByName(Chosen.c_str()) == EE_OK;
	}

	static bool RunOne(FJob& Job, int SampleRate)
	{
		std::string Chosen;
		if (!SelectVoice(Job.Request, Chosen))
		{
			Job.Error = "the voice \"" + Chosen + "\" is not installed";
			return false;
		}
		const FZnProsody Prosody = MapProsody(Job.Request.Speed, Job.Request.Volume, Job.Request.Pitch);
		espeak_SetParameter(espeakRATE, Prosody.RateWordsPerMinute, 0);
		espeak_SetParameter(espeakVOLUME, Prosody.Amplitude, 0);
		espeak_SetParameter(espeakPITCH, Prosody.Pitch, 0);

		FZnSynthesizedSpeech& Out = Job.Result;
		Out.SampleRate = SampleRate;
		if (const espeak_VOICE* Voice = espeak_GetCurrentVoice())
		{
			Out.VoiceIdentifier = Voice->identifier != nullptr ? Voice->identifier : Chosen;
			// The language list starts with a priority byte.
			Out.VoiceLanguage = Voice->languages != nullptr && Voice->languages[0] != 0 ? Voice->languages + 1 : "";
		}
		// The synthesiser draws its noise from the C library's rand(); starting every request from
		// the same point keeps that part repeatable. Other state carries over from one utterance to
		// the next inside the library (the same text can come out a few milliseconds longer or
		// shorter), and it cannot be reset: a second espeak_Initialize after espeak_Terminate hangs.
		std::srand(1);
		GSpeechBeingSynthesized = &Out;
		const espeak_ERROR Result = espeak_Synth(Job.Request.Text.c_str(), Job.Request.Text.size() + 1, 0,
			POS_CHARACTER, 0, espeakCHARS_UTF8, nullptr, nullptr);
		espeak_Synchronize();
		GSpeechBeingSynthesized = nullptr;
		if (Result != EE_OK)
		{
			Job.Error = "the speech synthesiser refused the text (error " + std::to_string(Result) + ")";
			return false;
		}
		if (Out.Samples.empty())
		{
			Job.Error = "the text gave no audio";
			return false;
		}
		return true;
	}

	std::mutex Mutex;
	std::condition_variable Wake;
	std::condition_variable Done;
	std::deque<FJob*> Queue;
	bool bStopping = false;
	// Declared last: it starts running in the constructor and uses everything above.
	std::thread Worker;
};
} // namespace

std::shared_ptr<FZnSpeechSynthesizer> FZnSpeechSynthesizer::Shared()
{
	static const std::shared_ptr<FZnSpeechSynthesizer> Instance = std::make_shared<FZnEspeakSynthesizer>();
	return Instance;
}

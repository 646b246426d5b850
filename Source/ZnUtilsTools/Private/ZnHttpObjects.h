// What the four HTTP request objects share: creation rooted in the transient package, the verb
// choice, the reading of a response that may be missing, and the diagnostic summary.
#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"
#include "Interfaces/IHttpResponse.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/WeakObjectPtrTemplates.h"
#include "ZnDM_HttpRequest.h"

namespace ZnHttpObjects
{
// A new object of T in the transient package, added to the root set so that it outlives garbage
// collection while its request is in flight.
template <class T>
T* CreateRooted()
{
	T* Object = NewObject<T>(GetTransientPackage());
	Object->AddToRoot();
	return Object;
}

// "GET" or "POST"; any other value leaves the engine's default verb.
void SetVerb(IHttpRequest& Request, ZnDM_HttpVerb Verb);

// The HTTP status, or 0 when there is no response (a request that was never sent).
int32 ResponseCode(const FHttpResponsePtr& Response);

// The body as text, or empty text when there is no response.
FString ResponseText(const FHttpResponsePtr& Response);

// The stricter test of the token, speech and download objects: a complete exchange with a status
// of 200 to 206.
bool IsAcceptedStatus(const FHttpResponsePtr& Response, bool bWasSuccessful);

// "request error, response code:" and the code, without a blank between.
FString RequestErrorText(int32 Code);

// "uniqueId:0x%02X, " with the object's index in the object array.
FString UniqueIdPrefix(const UObject* Object);

// The completion summary through the module logger: "Response IsValid:", "IsSuccess:", the
// "ResponseCode" value, "ResponseStr:" and the response text.
void PrintSummary(const FHttpResponsePtr& Response, bool bSuccess);
} // namespace ZnHttpObjects

// Where the motion service lives. These are deployment settings: a build for a real deployment
// defines both macros (for example in ZnUtilsTools.Build.cs or with -D) instead of editing code.
// The defaults are placeholders under a reserved domain, so nothing is sent anywhere by accident.
#pragma once

#ifndef ZN_SERVICE_URL_INTERNATIONAL
#define ZN_SERVICE_URL_INTERNATIONAL "https://api-intl.zenvora.example"
#endif

#ifndef ZN_SERVICE_URL_CHINA
#define ZN_SERVICE_URL_CHINA "https://api-cn.zenvora.example"
#endif

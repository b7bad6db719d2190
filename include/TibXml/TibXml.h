#pragma once

// Everything that the library offers.
#include <TibXml/EnginePtr.h>
#include <TibXml/JsonConversion.h>
#include <TibXml/WXPath.h>
#include <TibXml/WXmlCompositeNode.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/WXmlSax.h>
#include <TibXml/WXmlStringMap.h>
#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/tibutils/Stream.h>

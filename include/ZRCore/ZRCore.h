// SPDX-License-Identifier: Apache-2.0
/// @file
/// All of ZRCore but for ZRRuler.hpp, whose inline code needs all of <cmath>.
#ifndef ZRCORE_ZRCORE_H
#define ZRCORE_ZRCORE_H

#if __cplusplus < 202002L
#error "ZRCore is C++20: compile with -std=c++20 or later"
#endif

#include <ZRCore/CLLocation_Utils.h>
#include <ZRCore/NSDate_ZR.h>
#include <ZRCore/NSString_ZR.h>
#include <ZRCore/NSURLSession_ZR.h>
#include <ZRCore/NSURL_ZR.h>
#include <ZRCore/UIAlertController.h>
#include <ZRCore/ZRAnnotation.h>
#include <ZRCore/ZRApplicationKey.h>
#include <ZRCore/ZRArchive.h>
#include <ZRCore/ZRAudio.h>
#include <ZRCore/ZRConfigurationBase.h>
#include <ZRCore/ZRCoreLoad.h>
#include <ZRCore/ZRGeoAddress.h>
#include <ZRCore/ZRGeoAddressDialects.h>
#include <ZRCore/ZRGeometry.h>
#include <ZRCore/ZRGeometryAdditions.h>
#include <ZRCore/ZRLocation.h>
#include <ZRCore/ZRLocationBatchFilter.h>
#include <ZRCore/ZRLocationManager.h>
#include <ZRCore/ZROHMClassInfo.h>
#include <ZRCore/ZROHMRegistry.h>
#include <ZRCore/ZROHMValue.h>
#include <ZRCore/ZRObjectsFromJSON.h>
#include <ZRCore/ZRPlace.h>
#include <ZRCore/ZRPlatform.h>
#include <ZRCore/ZRPrintableText.h>
#include <ZRCore/ZRTrackingIdentity.h>
#include <ZRCore/ZRWebViewController.h>
#include <ZRCore/ZRGeometry.hpp>

#endif

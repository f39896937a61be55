#pragma once

// What a host application includes, beside the header of the host that it links.

#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "HVViewer/Utilities/Categories/ImageDrawWithFillColor.h"
#include "HVViewer/Utilities/Categories/ImageGLBlend.h"
#include "HVViewer/Utilities/ZNTMath.h"
#include "HVViewer/Utilities/ZNTUtilities.h"
#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/Bundle.h"
#include "Platform/Foundation/Clock.h"
#include "Platform/Foundation/Device.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Foundation/URLSession.h"
#include "Platform/Imaging/Image.h"
#include "Platform/Media/AudioSession.h"

// Umbrella header of the scene layer's exported classes.
#pragma once

#include "board/PCBScene.h"
#include "board/PCBSceneHelper.h"
#include "board/PCBSceneObserver.h"
#include "compare/CompareSceneObserver.h"
#include "component/ComponentExport.h"
#include "component/EntryPoints.h"
#include "component/SceneApiFactory.h"
#include "design/Scene.h"
#include "design/SceneObserver.h"
#include "scene/BaseScene.h"
#include "scene/BaseSceneObserver.h"
#include "scene/ChangeSource.h"
#include "scene/GroupInfo.h"
#include "scene/SearchQueryInfo.h"

// Identifiers of the filters, interfaces and media types of the pipeline.
#pragma once
#include "platform/media/ComTypes.h"

// Filters.
extern const CLSID CLSID_FilterGraph;
extern const CLSID CLSID_LAVSplitterSource;
extern const CLSID CLSID_LAVSplitter;
extern const CLSID CLSID_LAVVideo;
extern const CLSID CLSID_LAVAudio;
extern const CLSID CLSID_AsyncCd;
extern const CLSID CLSID_DVDNavigator;

// Interfaces.
extern const IID IID_IGraphBuilder;
extern const IID IID_IBaseFilter;
extern const IID IID_IPin;
extern const IID IID_IEnumPins;
extern const IID IID_IEnumMediaTypes;
extern const IID IID_IFileSourceFilter;
extern const IID IID_IMediaControl;
extern const IID IID_IMediaEventEx;
extern const IID IID_IBasicAudio;
extern const IID IID_IVideoWindow;
extern const IID IID_IBasicVideo;
extern const IID IID_IMediaSeeking;
extern const IID IID_IDvdControl2;
extern const IID IID_IDvdInfo2;
extern const IID IID_ILAVFSettings;
extern const IID IID_ILAVVideoSettings;
extern const IID IID_ILAVAudioSettings;
extern const IID IID_IGraphErrorText;
extern const IID IID_IGraphStreamTitle;
extern const IID IID_IStreamRecorder;

// Media types.
extern const GUID GUID_NULL;
extern const GUID MEDIATYPE_Video;
extern const GUID MEDIATYPE_Audio;
extern const GUID MEDIATYPE_Stream;
extern const GUID MEDIATYPE_Text;
extern const GUID MEDIATYPE_DVD_ENCRYPTED_PACK;
// The format block holds the pipeline's own description of the stream as
// text (its caps), terminated by a zero byte.
extern const GUID FORMAT_PipelineCaps;

// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" in upper case.
void GuidToText(REFGUID guid, char out[39]);

// The byte and number formats of the discs: the packs of a DVD, the WAV
// header in front of a CD track, the names of CD tracks, the DVD time codes
// and the texts the pump forms for DVD errors and warnings.
#include <gtest/gtest.h>

#include "modules/asynccd/WavHeader.h"
#include "platform/base/CdTrackPath.h"
#include "platform/media/DvdPacks.h"
#include "player/MediaPlayer.h"
#include "tests/support/PrintCString.h"

TEST(DiscFormats, APackSplitsIntoItsStreamsPieces) {
    std::vector<uint8_t> pack = {
        0x00, 0x00, 0x01, 0xBA, 0x44, 0x00, 0x04, 0x00, 0x04, 0x01, 0x01, 0x89, 0xC3, 0xF8,
        // AC3 track 0 with a PTS of one second: the id and three header bytes, then data.
        0x00, 0x00, 0x01, 0xBD, 0x00, 0x0E, 0x81, 0x80, 0x05, 0x21, 0x00, 0x05, 0xBF, 0x21, 0x80,
        0x01, 0x00, 0x01, 0x0B, 0x77,
        // Picture bytes with no PTS.
        0x00, 0x00, 0x01, 0xE0, 0x00, 0x05, 0x80, 0x00, 0x00, 0xAA, 0xBB,
        // Sub-picture track 1.
        0x00, 0x00, 0x01, 0xBD, 0x00, 0x05, 0x81, 0x00, 0x00, 0x21, 0xCC,
        // Scrambled picture bytes.
        0x00, 0x00, 0x01, 0xE0, 0x00, 0x04, 0x90, 0x00, 0x00, 0xDD};
    pack.resize(kDvdPackSize, 0xFF);
    std::vector<DvdPayload> pieces;
    ASSERT_TRUE(SplitDvdPack(pack.data(), pack.size(), pieces));
    ASSERT_EQ(pieces.size(), 4u);
    EXPECT_EQ(pieces[0].kind, DvdStreamKind::Audio);
    EXPECT_EQ(pieces[0].audio, DvdAudioCoding::Ac3);
    EXPECT_EQ(pieces[0].track, 0);
    EXPECT_TRUE(pieces[0].hasPts);
    EXPECT_EQ(pieces[0].pts, 90000u);
    EXPECT_EQ(pieces[0].offset, 32u);
    EXPECT_EQ(pieces[0].size, 2u);
    EXPECT_EQ(pieces[1].kind, DvdStreamKind::Video);
    EXPECT_FALSE(pieces[1].hasPts);
    EXPECT_EQ(pieces[1].offset, 43u);
    EXPECT_EQ(pieces[1].size, 2u);
    EXPECT_EQ(pieces[2].kind, DvdStreamKind::SubPicture);
    EXPECT_EQ(pieces[2].track, 1);
    EXPECT_EQ(pieces[2].offset, 55u);
    EXPECT_EQ(pieces[2].size, 1u);
    EXPECT_TRUE(pieces[3].scrambled);
    EXPECT_FALSE(pieces[0].scrambled || pieces[1].scrambled || pieces[2].scrambled);

    // A pack cut short keeps what fits; an MPEG-1 pack is no DVD pack.
    pieces.clear();
    EXPECT_TRUE(SplitDvdPack(pack.data(), 30, pieces));
    EXPECT_TRUE(pieces.empty());
    pack[4] = 0x21;
    EXPECT_FALSE(SplitDvdPack(pack.data(), pack.size(), pieces));
}

TEST(DiscFormats, ACdTrackReadsAsAWavFile) {
    const auto header = CdWavHeader(75 * kCdSectorBytes);
    const std::array<uint8_t, 44> expected = {
        'R',  'I',  'F',  'F',  0x34, 0xB1, 0x02, 0x00, 'W',  'A',  'V',  'E',  'f',  'm',  't',
        ' ',  0x10, 0x00, 0x00, 0x00, 0x01, 0x00, 0x02, 0x00, 0x44, 0xAC, 0x00, 0x00, 0x10, 0xB1,
        0x02, 0x00, 0x04, 0x00, 0x10, 0x00, 'd',  'a',  't',  'a',  0x10, 0xB1, 0x02, 0x00};
    EXPECT_EQ(header, expected);
}

TEST(DiscFormats, TrackPathsNameADiscAndATrackOfIt) {
    std::string disc;
    int track = 0;
    ASSERT_TRUE(SplitCdTrackPath("/dev/sr0/Track07.cda", disc, track));
    EXPECT_EQ(disc, "/dev/sr0");
    EXPECT_EQ(track, 7);
    ASSERT_TRUE(SplitCdTrackPath("/discs/my disc.cue/track99.CDA", disc, track));
    EXPECT_EQ(disc, "/discs/my disc.cue");
    EXPECT_EQ(track, 99);
    for (const char* bad : {"/dev/sr0/Track00.cda", "/dev/sr0/Track100.cda", "/Track01.cda",
                            "Track01.cda", "/dev/sr0/Track1.cda", "/dev/sr0/Track01.wav"})
        EXPECT_FALSE(SplitCdTrackPath(bad, disc, track)) << bad;
    EXPECT_EQ(CdTrackFileName(3), "Track03.cda");
}

TEST(DiscFormats, DvdTimeCodesAndTheTextsOfErrorsAndWarnings) {
    EXPECT_EQ(CMediaPlayer::BcdTimeToSeconds(0x00563412u), 12u * 3600 + 34 * 60 + 56);
    EXPECT_EQ(CMediaPlayer::BcdTimeToSeconds(0xFF563412u), 12u * 3600 + 34 * 60 + 56);
    EXPECT_EQ(CMediaPlayer::HmsfToSeconds(0x1E3B0102u), 2u * 3600 + 60 + 59);
    const DVD_HMSF_TIMECODE time = CMediaPlayer::SecondsToHmsf(7319);
    EXPECT_EQ(time.bHours, 2);
    EXPECT_EQ(time.bMinutes, 1);
    EXPECT_EQ(time.bSeconds, 59);
    EXPECT_EQ(time.bFrames, 0);

    EXPECT_EQ(CMediaPlayer::DvdProblemText(EC_DVD_ERROR, DVD_ERROR_LowParentalLevel),
              CString(u"Player parental level is set lower than the lowest parental\nlevel "
                      u"available in this DVD-Video content.\nCannot playback this DVD-Video "
                      u"disc.\n"));
    EXPECT_TRUE(CMediaPlayer::DvdProblemText(EC_DVD_ERROR, 2).IsEmpty());
    EXPECT_EQ(CMediaPlayer::DvdProblemText(EC_DVD_WARNING, DVD_WARNING_FormatNotSupported),
              CString(u"DVD Warning: The decoder does not support the new format\n."));
    EXPECT_EQ(CMediaPlayer::DvdProblemText(EC_DVD_WARNING, 99),
              CString(u"DVD Warning: An unknown (99) warning received.\n"));
}

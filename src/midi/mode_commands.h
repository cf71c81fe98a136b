// Putting the synthesiser into a mode, and its channels into a known state.
#pragma once

namespace zelmar {

// Each sends its mode message, stores the mode ("GM2", "GS", "XG"), wakes the transport bar in front and
// reloads the tone bank.
void GMModeCommand();
void GSModeCommand();
void XGModeCommand();

// The mode message again for a mode of "GM", "XG" or "GS"; "GM2" and any other send nothing.
void RepeatModeCommand();

// The command for the stored mode at start: XG, GS, and GM for any other.
void StartModeCommand();

// Which controllers a reset sets, on channels 1 to 16 in turn.
enum class ChannelReset {
  kStart,        // 121, 93, 91 to 0; 7 to 127; 10 to 64; 1 to 0
  kAfterLoad,    // 121, 93, 91 to 0; 7 to 127; 10 to 64
  kControllers,  // as at start, then 11 to 127; 64 and 65 to 0
};
void ResetChannels(ChannelReset reset);

}  // namespace zelmar

// SPDX-License-Identifier: Apache-2.0
#include <ZRCore/AVAudioPlayer.h>
#include <ZRCore/AVAudioSession.h>
#include <ZRCore/AVSpeechSynthesis.h>

AVAudioSession::~AVAudioSession() = default;

AVSpeechSynthesisVoice::~AVSpeechSynthesisVoice() = default;
AVSpeechUtterance::~AVSpeechUtterance() = default;
AVSpeechSynthesizer::AVSpeechSynthesizer() = default;
AVSpeechSynthesizer::~AVSpeechSynthesizer() = default;
AVSpeechSynthesizerDelegate::~AVSpeechSynthesizerDelegate() = default;
ZRSpeech::~ZRSpeech() = default;

void AVSpeechSynthesizerDelegate::speechSynthesizerDidFinishSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer>,
                                                                            std::shared_ptr<AVSpeechUtterance>) {}
void AVSpeechSynthesizerDelegate::speechSynthesizerDidPauseSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer>,
                                                                           std::shared_ptr<AVSpeechUtterance>) {}
void AVSpeechSynthesizerDelegate::speechSynthesizerDidCancelSpeechUtterance(std::shared_ptr<AVSpeechSynthesizer>,
                                                                            std::shared_ptr<AVSpeechUtterance>) {}

AVAudioPlayer::AVAudioPlayer() = default;
AVAudioPlayer::~AVAudioPlayer() = default;
AVAudioPlayerDelegate::~AVAudioPlayerDelegate() = default;
ZRAudioPlayers::~ZRAudioPlayers() = default;

void AVAudioPlayerDelegate::audioPlayerDidFinishPlayingSuccessfully(std::shared_ptr<AVAudioPlayer>, bool) {}
void AVAudioPlayerDelegate::audioPlayerDecodeErrorDidOccur(std::shared_ptr<AVAudioPlayer>, const NSError&) {}
void AVAudioPlayerDelegate::audioPlayerBeginInterruption(std::shared_ptr<AVAudioPlayer>) {}

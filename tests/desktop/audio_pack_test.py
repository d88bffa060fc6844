"""The pack for the sound, with two sound servers and without one."""

import os
import re
import subprocess
import unittest

from pack_test_case import AWKWARD, PackTestCase
from quillmar_desktop import DEADLINE_SECONDS, wait_until

# A sound server with an output and a microphone that nobody hears.
PIPEWIRE_CONFIGURATION = """
context.properties = { core.daemon = true core.name = pipewire-0 }
context.spa-libs = {
  audio.convert.* = audioconvert/libspa-audioconvert
  support.* = support/libspa-support
}
context.modules = [
  { name = libpipewire-module-protocol-native }
  { name = libpipewire-module-metadata }
  { name = libpipewire-module-spa-node-factory }
  { name = libpipewire-module-client-node }
  { name = libpipewire-module-client-device }
  { name = libpipewire-module-access }
  { name = libpipewire-module-adapter }
  { name = libpipewire-module-link-factory }
  { name = libpipewire-module-session-manager }
]
context.objects = [
  { factory = adapter args = {
      factory.name = support.null-audio-sink
      node.name = output media.class = Audio/Sink audio.position = [ FL FR ] } }
  { factory = adapter args = {
      factory.name = support.null-audio-sink
      node.name = microphone media.class = Audio/Source/Virtual audio.position = [ FL FR ] } }
]
"""


class AudioPackTest(PackTestCase):

    NO_SERVER = "This needs a running sound server, and pactl or wpctl to speak to it."

    def setUp(self):
        super().setUp()
        # Sound servers lie in the runtime folder; each test has its own.
        self.runtime = self.scratch / "run"
        self.runtime.mkdir(mode=0o700)
        self.environment["PULSE_RUNTIME_PATH"] = str(self.runtime)
        self.environment["PIPEWIRE_RUNTIME_DIR"] = str(self.runtime)
        self.have_pack("audio")

    def start_server(self, *command):
        with open(self.scratch / "server.log", "ab") as log:
            server = subprocess.Popen(command, env={**os.environ, **self.environment},
                                      stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        self.addCleanup(server.wait)
        self.addCleanup(server.kill)

    def ask(self, *command):
        """What the server's own tool answers; nothing when it fails."""
        return subprocess.run(command, env={**os.environ, **self.environment},
                              capture_output=True, text=True, check=False,
                              timeout=DEADLINE_SECONDS).stdout

    def start_pulseaudio(self):
        self.start_server(
            "pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1",
            "--load=module-native-protocol-unix",
            "--load=module-null-sink sink_name=one sink_properties=device.description=First",
            "--load=module-null-sink sink_name=two sink_properties=device.description=Second")
        wait_until(lambda: "two" in self.ask("pactl", "list", "short", "sinks"),
                   "PulseAudio has its outputs")

    def start_pipewire(self):
        configuration = self.scratch / "pipewire.conf"
        configuration.write_text(PIPEWIRE_CONFIGURATION)
        self.start_server("pipewire", "-c", str(configuration))
        wait_until(lambda: (self.runtime / "pipewire-0").exists(), "PipeWire listens")
        self.start_server("wireplumber")
        for device in ("SINK", "SOURCE"):
            wait_until(lambda name=f"@DEFAULT_AUDIO_{device}@":
                       self.ask("wpctl", "get-volume", name), "PipeWire has its devices")

    def changes_the_volume(self, volume, road):
        """Runs the items; volume() is what the server itself says, "30%" or "30%, muted"."""
        def leads_to(title, expected, text=None):
            self.assertEqual(self.succeed(title, text, road), f"Volume {expected}")
            self.assertEqual(volume(), expected)

        leads_to("Set the volume…", "30%", "30")
        leads_to("Louder", "35%")
        leads_to("Quieter", "30%")
        leads_to("Set the volume…", "97%", " 97%")
        leads_to("Louder", "100%")
        leads_to("Louder", "100%")
        for wrong in ("101", "-5", "half", "", AWKWARD):
            self.fails("Set the volume…", "The volume is a number from 0 to 100.", wrong, road)
        self.assertEqual(volume(), "100%")
        leads_to("Set the volume…", "0%", "0")
        leads_to("Quieter", "0%")
        leads_to("Mute or unmute the sound", "0%, muted")
        self.assertEqual(self.succeed("Show the volume", None, road), "Volume 0%, muted")
        leads_to("Mute or unmute the sound", "0%")

    def mutes_the_microphone(self, is_muted, road):
        for muted, sentence in ((True, "The microphone is muted."), (False, "The microphone is on.")):
            title = "Mute or unmute the microphone"
            self.assertEqual(self.succeed(title, None, road), sentence)
            self.assertEqual(is_muted(), muted)

    def test_every_item_does_what_its_title_says_with_pulseaudio(self):
        def volume():
            level = re.search(r"\d+%", self.ask("pactl", "get-sink-volume", "@DEFAULT_SINK@"))[0]
            muted = "yes" in self.ask("pactl", "get-sink-mute", "@DEFAULT_SINK@")
            return level + (", muted" if muted else "")

        self.start_pulseaudio()
        road = self.path_without("wpctl")
        self.changes_the_volume(volume, road)
        self.ask("pactl", "set-sink-volume", "@DEFAULT_SINK@", "130%")
        self.assertEqual(self.succeed("Louder", None, road), "Volume 130%")
        self.mutes_the_microphone(
            lambda: "yes" in self.ask("pactl", "get-source-mute", "@DEFAULT_SOURCE@"), road)
        for name, description in (("two", "Second"), ("one", "First")):
            self.assertEqual(self.succeed("Use the next output", None, road), description)
            self.assertEqual(self.ask("pactl", "get-default-sink"), f"{name}\n")
        self.assert_all_were_tried()

    def test_the_items_do_the_same_with_pipewire_alone(self):
        def volume():
            words = self.ask("wpctl", "get-volume", "@DEFAULT_AUDIO_SINK@").split()
            return f"{round(float(words[1]) * 100)}%" + (", muted" if len(words) > 2 else "")

        self.start_pipewire()
        road = self.path_without("pactl")
        self.changes_the_volume(volume, road)
        self.mutes_the_microphone(
            lambda: "MUTED" in self.ask("wpctl", "get-volume", "@DEFAULT_AUDIO_SOURCE@"), road)
        self.fails("Use the next output", self.NO_SERVER.replace(" or wpctl", ""),
                   environment=road)
        self.assert_all_were_tried()

    def test_without_a_sound_server_every_item_says_so(self):
        for title, item in self.items.items():
            sentence = (self.NO_SERVER.replace(" or wpctl", "") if title == "Use the next output"
                        else self.NO_SERVER)
            self.fails(title, sentence, "30" if "inputPrompt" in item else None)


if __name__ == "__main__":
    unittest.main()

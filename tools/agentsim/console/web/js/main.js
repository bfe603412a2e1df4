// The support console's page: wires the screen, the remote, the commands, the panels and the
// feed together.
import { commandPath, getJson } from './api.js';
import { Commands } from './commands.js';
import { Feed } from './feed.js';
import { AgentServer, Device, TvMenu } from './panels.js';
import { Remote, REMOTE_COMMAND } from './remote.js';
import { LiveScreen } from './screen.js';

const $ = (selector) => document.querySelector(selector);

async function buildRemote(remote) {
  try {
    const description = await getJson(commandPath(REMOTE_COMMAND, 'descriptor'));
    const buttons = (description.document.INPUTS ?? []).find((input) => input.ID === 'BUTTONS');
    remote.build(buttons?.VALUES ?? []);
  } catch (error) {
    $('#remote-status').textContent = `no remote: ${error.message}`;
  }
}

function start() {
  const remote = new Remote($('#remote'), $('#remote-status'));
  const screen = new LiveScreen({
    canvas: $('#screen'),
    rateSelect: $('#frame-rate'),
    pauseButton: $('#screen-pause'),
    status: $('#screen-status'),
    stats: {
      frames: $('#stat-frames'),
      fps: $('#stat-fps'),
      misses: $('#stat-misses'),
      fills: $('#stat-fills'),
      size: $('#stat-size'),
      bytes: $('#stat-bytes'),
    },
    onKey: (button) => remote.press(button),
  });
  const tvMenu = new TvMenu($('#tv-panel'));
  const server = new AgentServer($('#host-panel'));
  const device = new Device($('#device-panel'), $('#device-summary'));
  const commands = new Commands({ nav: $('#catalogue'), view: $('#command-view'), count: $('#command-count') });
  const feed = new Feed({
    list: $('#feed'),
    filter: $('#feed-filter'),
    sources: $('#feed-sources'),
    pauseButton: $('#feed-pause'),
    clearButton: $('#feed-clear'),
    connection: $('#connection'),
    onState: (state) => {
      tvMenu.show(state.tv, state.screen);
      server.show(state);
    },
  });

  feed.connect();
  screen.run();
  buildRemote(remote);
  device.load();
  commands.load().then(() => document.body.dataset.ready = 'true')
    .catch((error) => { $('#command-view').textContent = `no catalogue: ${error.message}`; });
}

start();

'use strict';
(function () {
  const report = JSON.parse(document.getElementById('data').textContent);
  const kColours = [0xd9480f, 0xc2255c, 0x9c36b5, 0x1971c2, 0x5f3dc4, 0xe03131, 0x0c8599, 0x2f9e44,
    0x846358, 0xb8860b];
  const kListed = 100;  // buttons that a class shows at a time
  const isDark = window.matchMedia('(prefers-color-scheme: dark)');
  const byId = (id) => document.getElementById(id);
  let current = 0;

  function element(name, parent, text) {
    const made = document.createElement(name);
    if (text !== undefined) made.textContent = text;
    if (parent) parent.appendChild(made);
    return made;
  }
  function drawing(name, attributes, parent) {
    const made = document.createElementNS('http://www.w3.org/2000/svg', name);
    for (const key of Object.keys(attributes)) made.setAttribute(key, attributes[key]);
    if (parent) parent.appendChild(made);
    return made;
  }
  function bytesOf(text) {
    const letters = atob(text);
    const bytes = new Uint8Array(letters.length);
    for (let i = 0; i < letters.length; ++i) bytes[i] = letters.charCodeAt(i);
    return bytes.buffer;
  }
  const grouped = (count) => count.toLocaleString('en');
  const short = (number) => Number(number.toPrecision(6)).toString();

  for (const mesh of report.meshes) {
    mesh.points = new Float32Array(bytesOf(mesh.points));
    mesh.triangles = new Uint32Array(bytesOf(mesh.triangles));
    mesh.lines = new Uint32Array(bytesOf(mesh.lines));
    for (const defect of mesh.defects) {
      defect.places = new Float32Array(bytesOf(defect.places));
      defect.labels = new Int32Array(bytesOf(defect.labels));
      defect.nodesEach = { edge: 2, node: 1, face: 4 }[defect.kind];
      defect.listed = defect.places.length / (3 * defect.nodesEach);
      defect.isShown = true;
    }
  }

  // ---- the picture

  let renderer = null;
  let scene, camera, controls, lamp;
  let drawn = null;  // the group of the current mesh
  let marker = null;
  const view = byId('view');

  function startView() {
    try {
      renderer = new THREE.WebGLRenderer({ antialias: true, preserveDrawingBuffer: true });
    } catch (error) {
      element('p', view, 'This browser offers no WebGL, so the mesh cannot be drawn here.');
      return;
    }
    renderer.setPixelRatio(Math.min(window.devicePixelRatio || 1, 2));
    view.appendChild(renderer.domElement);
    scene = new THREE.Scene();
    camera = new THREE.PerspectiveCamera(40, 1, 0.0005, 100);
    lamp = new THREE.DirectionalLight(0xffffff, 0.75);
    scene.add(new THREE.HemisphereLight(0xffffff, 0x777788, 0.55));
    scene.add(camera);
    camera.add(lamp);
    lamp.position.set(-0.6, 0.8, 1);
    controls = new THREE.OrbitControls(camera, renderer.domElement);
    controls.enableKeys = false;
    controls.addEventListener('change', draw);
    window.addEventListener('resize', fit);
    isDark.addListener(function () { recolour(); draw(); });
    recolour();
    home();
  }
  function recolour() {
    renderer.setClearColor(isDark.matches ? 0x14171b : 0xeef1f5);
  }
  function draw() {
    if (renderer) renderer.render(scene, camera);
  }
  function fit() {
    if (!renderer) return;
    renderer.setSize(view.clientWidth, view.clientHeight);
    camera.aspect = view.clientWidth / Math.max(1, view.clientHeight);
    camera.updateProjectionMatrix();
    draw();
  }
  function home() {
    if (!renderer) return;
    const narrow = Math.min(1, view.clientWidth / Math.max(1, view.clientHeight));
    controls.target.set(0, 0, 0);
    camera.position.set(0.5, 0.35, 0.8).normalize().multiplyScalar(3 / narrow);
    removeMarker();
    controls.update();
    fit();
  }
  function attribute(numbers) { return new THREE.BufferAttribute(numbers, 3); }

  function meshGroup(mesh) {
    const group = new THREE.Group();
    const points = attribute(mesh.points);
    const surface = new THREE.BufferGeometry();
    surface.setAttribute('position', points);
    surface.setIndex(new THREE.BufferAttribute(mesh.triangles, 1));
    const skin = new THREE.MeshPhongMaterial({ color: 0x9db4c8, specular: 0x222222,
      side: THREE.DoubleSide, flatShading: true, polygonOffset: true, polygonOffsetFactor: 1,
      polygonOffsetUnits: 1 });
    group.faces = new THREE.Mesh(surface, skin);
    group.add(group.faces);
    const net = new THREE.BufferGeometry();
    net.setAttribute('position', points);
    net.setIndex(new THREE.BufferAttribute(mesh.lines, 1));
    group.edges = new THREE.LineSegments(net,
      new THREE.LineBasicMaterial({ color: 0x3d4f5f, transparent: true, opacity: 0.6 }));
    group.add(group.edges);
    group.defects = mesh.defects.map(function (defect, index) {
      const made = defectObject(defect, kColours[index]);
      group.add(made);
      return made;
    });
    return group;
  }
  function defectObject(defect, colour) {
    const geometry = new THREE.BufferGeometry();
    const finite = [];  // rows of which every place is one
    const row = 3 * defect.nodesEach;
    for (let start = 0; start < defect.places.length; start += row) {
      const places = defect.places.subarray(start, start + row);
      if (places.every(isFinite)) {
        const order = defect.kind === 'face' ? [0, 1, 2, 0, 2, 3] :
          defect.kind === 'edge' ? [0, 1] : [0];
        for (const node of order) finite.push(places[3 * node], places[3 * node + 1], places[3 * node + 2]);
      }
    }
    geometry.setAttribute('position', attribute(new Float32Array(finite)));
    if (defect.kind === 'face') {
      return new THREE.Mesh(geometry, new THREE.MeshBasicMaterial({ color: colour, side: THREE.DoubleSide }));
    }
    if (defect.kind === 'edge') {
      return new THREE.LineSegments(geometry, new THREE.LineBasicMaterial({ color: colour, linewidth: 3 }));
    }
    return new THREE.Points(geometry,
      new THREE.PointsMaterial({ color: colour, size: 7, sizeAttenuation: false }));
  }
  function release(group) {
    group.traverse(function (part) {
      if (part.geometry) part.geometry.dispose();
      if (part.material) part.material.dispose();
    });
  }
  function showMesh() {
    if (!renderer) return;
    if (drawn) {
      scene.remove(drawn);
      release(drawn);
    }
    drawn = meshGroup(report.meshes[current]);
    scene.add(drawn);
    showParts();
  }
  function showParts() {
    if (!drawn) return;
    drawn.faces.visible = byId('faces').checked;
    drawn.edges.visible = byId('edges').checked;
    report.meshes[current].defects.forEach(function (defect, index) {
      drawn.defects[index].visible = defect.isShown;
    });
    draw();
  }

  // ---- flying

  function removeMarker() {
    if (!marker) return;
    scene.remove(marker);
    release(marker);
    marker = null;
  }
  function placeOf(defect, index) {
    const row = 3 * defect.nodesEach;
    const place = [0, 0, 0];
    let reach = 0;
    for (let node = 0; node < defect.nodesEach; ++node) {
      for (let axis = 0; axis < 3; ++axis) {
        place[axis] += defect.places[row * index + 3 * node + axis] / defect.nodesEach;
      }
    }
    for (let i = 0; i < row; ++i) {
      reach = Math.max(reach, Math.abs(defect.places[row * index + i] - place[i % 3]));
    }
    return { place: place, reach: reach };
  }
  function labelOf(defect, index) {
    const labels = defect.labels;
    if (defect.kind === 'edge') return 'edge ' + labels[2 * index] + '\u2013' + labels[2 * index + 1];
    if (defect.kind === 'node') return 'node ' + labels[index];
    return (labels[2 * index + 1] === 4 ? 'quad ' : 'triangle ') + labels[2 * index];
  }
  function flyTo(defect, index) {
    const spot = placeOf(defect, index);
    const at = spot.place.map((x, axis) => short(x * report.scale + report.centre[axis]));
    byId('note').textContent = labelOf(defect, index) + ' (' + defect.description + ') at (' +
      at.join(', ') + ')';
    if (!renderer) return;
    const target = new THREE.Vector3(spot.place[0], spot.place[1], spot.place[2]);
    const away = Math.max(0.02, Math.min(2, spot.reach * 8 || 0.3));
    const out = target.length() > 0.05 ? target.clone().normalize() :
      camera.position.clone().sub(controls.target).normalize();
    if (Math.abs(out.y) > 0.95) out.set(0.3, out.y, 0.3).normalize();
    const end = target.clone().add(out.multiplyScalar(away));
    removeMarker();
    marker = new THREE.Mesh(new THREE.SphereGeometry(Math.max(spot.reach * 1.3, away / 40), 16, 12),
      new THREE.MeshBasicMaterial({ color: 0xffc400, wireframe: true, transparent: true, opacity: 0.5 }));
    marker.position.copy(target);
    scene.add(marker);
    const from = camera.position.clone();
    const fromTarget = controls.target.clone();
    const still = window.matchMedia('(prefers-reduced-motion: reduce)').matches;
    const begin = performance.now();
    (function step(now) {
      const part = still ? 1 : Math.min(1, Math.max(0, (now - begin) / 600));
      const eased = part * part * (3 - 2 * part);
      camera.position.lerpVectors(from, end, eased);
      controls.target.lerpVectors(fromTarget, target, eased);
      controls.update();
      draw();
      if (part < 1) requestAnimationFrame(step);
    })(begin);
  }

  // ---- the lists

  function listPlaces(defect, list, more) {
    const start = list.children.length;
    const end = Math.min(defect.listed, start + kListed);
    for (let index = start; index < end; ++index) {
      const button = element('button', element('li', list), labelOf(defect, index));
      button.type = 'button';
      button.disabled = !placeOf(defect, index).place.every(isFinite);
      if (button.disabled) button.title = 'it has no place in space';
      button.addEventListener('click', function () { flyTo(defect, index); });
    }
    more.hidden = end >= defect.listed;
  }
  function showDefects() {
    const box = byId('classes');
    box.textContent = '';
    const mesh = report.meshes[current];
    let found = 0;
    mesh.defects.forEach(function (defect, index) {
      if (defect.count === 0) return;
      ++found;
      const part = element('div', box);
      part.className = 'class';
      const label = element('label', part);
      const box2 = element('input', label);
      box2.type = 'checkbox';
      box2.checked = defect.isShown;
      box2.addEventListener('change', function () {
        defect.isShown = box2.checked;
        showParts();
      });
      const swatch = drawing('svg', { class: 'swatch', viewBox: '0 0 1 1', 'aria-hidden': 'true' }, label);
      drawing('rect', { width: 1, height: 1, fill: '#' + kColours[index].toString(16).padStart(6, '0') }, swatch);
      label.appendChild(document.createTextNode(grouped(defect.count) + ' ' + defect.description));
      const details = element('details', part);
      element('summary', details, 'Places' + (defect.listed < defect.count ?
        ' (the first ' + grouped(defect.listed) + ')' : ''));
      const list = element('ul', details);
      const more = element('button', details, 'More');
      more.type = 'button';
      more.addEventListener('click', function () { listPlaces(defect, list, more); });
      details.addEventListener('toggle', function () {
        if (details.open && list.children.length === 0) listPlaces(defect, list, more);
      });
    });
    if (found === 0) element('p', box, mesh.faces > 0 ? 'No defects.' : 'There are no faces.');
  }
  function showFacts() {
    const table = byId('fact-rows');
    if (report.meshes.length > 1) {
      const head = element('tr', table);
      element('td', head);
      for (const mesh of report.meshes) element('th', head, mesh.name).scope = 'col';
    }
    report.meshes[0].facts.forEach(function (fact, row) {
      const line = element('tr', table);
      element('th', line, fact[0]).scope = 'row';
      for (const mesh of report.meshes) element('td', line, mesh.facts[row][1]);
    });
  }
  function showBars(id, histogram, what, unit) {
    const box = byId(id);
    box.textContent = '';
    const counts = histogram.counts;
    const most = Math.max(1, Math.max.apply(null, counts));
    const total = counts.reduce((sum, count) => sum + count, 0);
    const step = (histogram.high - histogram.low) / counts.length;
    const range = (bar) => short(histogram.low + bar * step) + ' to ' + short(histogram.low + (bar + 1) * step) + unit;
    const svg = drawing('svg', { class: 'bars', viewBox: '0 0 360 150', role: 'img', 'aria-label':
      grouped(total) + ' ' + what + ', most of them from ' + range(counts.indexOf(most)) }, box);
    counts.forEach(function (count, bar) {
      const height = 120 * count / most;
      const rect = drawing('rect', { x: bar * 10 + 0.5, y: 130 - height, width: 9, height: height }, svg);
      drawing('title', {}, rect).textContent = range(bar) + ': ' + grouped(count);
    });
    drawing('line', { x1: 0, y1: 130, x2: 360, y2: 130 }, svg);
    drawing('text', { x: 0, y: 145 }, svg).textContent = short(histogram.low) + unit;
    drawing('text', { x: 360, y: 145, 'text-anchor': 'end' }, svg).textContent = short(histogram.high) + unit;
    const details = element('details', box);
    element('summary', details, 'As a table');
    const table = element('table', details);
    counts.forEach(function (count, bar) {
      const line = element('tr', table);
      element('th', line, range(bar)).scope = 'row';
      element('td', line, grouped(count));
    });
  }
  function showUnfolding(mesh) {
    const box = byId('unfolding');
    box.textContent = '';
    if (!mesh.unfolding) {
      element('p', box, 'There is no triangle to unfold.');
      return;
    }
    if (mesh.isThinned) element('p', box, 'This is the unfolding of the thinned mesh.');
    const image = element('img', box);
    image.alt = grouped(mesh.unfoldedFaces) + ' triangles laid out flat, each beside the one it was reached from';
    image.src = 'data:image/svg+xml;charset=utf-8,' + encodeURIComponent(mesh.unfolding);
  }
  function showSide() {
    const mesh = report.meshes[current];
    removeMarker();
    showMesh();
    showDefects();
    showBars('length-bars', mesh.lengths, 'edges', '');
    showBars('angle-bars', mesh.angles, 'corners', '\u00b0');
    showUnfolding(mesh);
    view.setAttribute('aria-label', mesh.name + ', a mesh of ' + grouped(mesh.faces) + ' faces');
    byId('note').textContent = '';
    byId('thinning').textContent = mesh.isThinned ? 'Drawn thinned: ' + grouped(mesh.shownFaces) + ' of ' +
      grouped(mesh.faces) + ' faces. Faces about listed defects are kept; all figures are those of the whole mesh.' : '';
  }

  // ---- the controls

  function turn(right, up) {
    const arm = camera.position.clone().sub(controls.target);
    const angles = new THREE.Spherical().setFromVector3(arm);
    angles.theta += right;
    angles.phi = Math.max(0.01, Math.min(Math.PI - 0.01, angles.phi + up));
    camera.position.copy(controls.target).add(arm.setFromSpherical(angles));
    controls.update();
    draw();
  }
  function comeCloser(factor) {
    camera.position.sub(controls.target).multiplyScalar(factor).add(controls.target);
    controls.update();
    draw();
  }
  function toggle(id) {
    byId(id).checked = !byId(id).checked;
    showParts();
  }
  const keys = {
    ArrowLeft: () => turn(-0.1, 0), ArrowRight: () => turn(0.1, 0), ArrowUp: () => turn(0, -0.1),
    ArrowDown: () => turn(0, 0.1), '+': () => comeCloser(0.85), '=': () => comeCloser(0.85),
    '-': () => comeCloser(1 / 0.85), Home: home, e: () => toggle('edges'), f: () => toggle('faces'),
  };
  view.addEventListener('keydown', function (event) {
    if (!renderer || event.ctrlKey || event.altKey || event.metaKey || !keys[event.key]) return;
    event.preventDefault();
    keys[event.key]();
  });
  byId('home').addEventListener('click', home);
  byId('edges').addEventListener('change', showParts);
  byId('faces').addEventListener('change', showParts);

  function choose(side) {
    current = side;
    document.getElementsByName('side')[side].checked = true;
    showSide();
  }
  function startSides() {
    const box = byId('sides');
    report.meshes.forEach(function (mesh, side) {
      const label = element('label', box);
      const radio = element('input', label);
      radio.type = 'radio';
      radio.name = 'side';
      radio.checked = side === 0;
      radio.addEventListener('change', function () { choose(side); });
      label.appendChild(document.createTextNode((side === 0 ? ' Before: ' : ' After: ') + mesh.name));
    });
    box.hidden = byId('hint-sides').hidden = false;
    keys.b = () => choose(1 - current);
  }

  const names = report.meshes.map((mesh) => mesh.name).join(' \u2192 ');
  document.title = names + ' \u2013 mesh report';
  byId('title').textContent = names;
  if (report.meshes.length > 1) startSides();
  startView();
  showFacts();
  showSide();
  if (renderer) document.body.setAttribute('data-drawn', 'yes');
}());
